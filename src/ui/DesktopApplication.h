#pragma once

#include "ui/HandlerTimes.h"

#include <QApplication>
#include <QTranslator>

namespace brindle {

/// The program as the window system sees it.
class DesktopApplication : public QApplication {
    Q_OBJECT

public:
    DesktopApplication(int& argc, char** argv);

    /// Follows the language of the texts, as it did when it was made: with the direction of the layout, with
    /// that of names, and in Qt's own dialogs.
    void takeLanguage();

    [[nodiscard]] HandlerTimes& handlerTimes() { return handlerTimes_; }

    bool notify(QObject* receiver, QEvent* event) override;

Q_SIGNALS:
    /// The user turned to the program.
    void becameActive();
    /// The session is over. Nothing has ended yet.
    void sessionEnded();

protected:
    bool event(QEvent* event) override;

private:
    HandlerTimes handlerTimes_;
    QTranslator dialogTexts_;  // goes first: its end is an event, whose time is measured
};

}  // namespace brindle
