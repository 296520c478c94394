#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace brindle {

/// What the about window says, below the program's name.
/// Thread: main.
class AboutModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString productLine READ productLine CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString copyright READ copyright CONSTANT)
    Q_PROPERTY(QStringList privacy READ privacy CONSTANT)
    Q_PROPERTY(QString updates READ updates CONSTANT)

public:
    explicit AboutModel(AppModel& model, QObject* parent = nullptr) : QObject(parent), model_(model) {}

    [[nodiscard]] QString productLine() const;
    [[nodiscard]] QString version() const;  // "Version 1.2.0 (build 41)"
    [[nodiscard]] QString copyright() const;
    [[nodiscard]] QStringList privacy() const;  // a paragraph each
    [[nodiscard]] QString updates() const;

private:
    AppModel& model_;
};

}  // namespace brindle
