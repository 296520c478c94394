#include "ui/DesktopApplication.h"

#include "ui/windows/QmlModules.h"

#include <QEvent>
#include <QQuickStyle>

namespace brindle {

DesktopApplication::DesktopApplication(int& argc, char** argv) : QApplication(argc, argv) {
    registerQmlModules();
    // What is stock follows the theme, which has been made for this style.
    QQuickStyle::setStyle("Basic");
    setApplicationName("Brindle");
    setDesktopFileName("org.brindle.brindle");
    setQuitOnLastWindowClosed(false);
    connect(this, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) Q_EMIT becameActive();
    });
    connect(this, &QGuiApplication::commitDataRequest, this, [this] { Q_EMIT sessionEnding(); });
}

bool DesktopApplication::notify(QObject* receiver, QEvent* event) {
#ifdef BRINDLE_HANDLER_TIMES
    const HandlerTimes::Measured measured(handlerTimes_, receiver, event);
#endif
    return QApplication::notify(receiver, event);
}

}  // namespace brindle
