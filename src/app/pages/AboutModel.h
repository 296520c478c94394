#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// What the about window says, below the program's name.
/// Thread: main.
class AboutModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    explicit AboutModel(AppModel& model, QObject* parent = nullptr) : QObject(parent), model_(model) {}

    /// The product line, the version, whose it is, and a paragraph each on privacy and on updates.
    [[nodiscard]] QString text() const;

private:
    AppModel& model_;
};

}  // namespace brindle
