#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// What the about window says, below the program's name: the product line, which version it is and whose, and
/// a paragraph each on privacy and on updates.
/// Thread: main.
class AboutModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString product READ product CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString copyright READ copyright CONSTANT)
    Q_PROPERTY(QString privacy READ privacy CONSTANT)
    Q_PROPERTY(QString updates READ updates CONSTANT)

public:
    explicit AboutModel(AppModel& model, QObject* parent = nullptr) : QObject(parent), model_(model) {}

    [[nodiscard]] QString product() const;
    [[nodiscard]] QString version() const;
    [[nodiscard]] QString copyright() const;
    [[nodiscard]] QString privacy() const;
    [[nodiscard]] QString updates() const;

private:
    AppModel& model_;
};

}  // namespace brindle
