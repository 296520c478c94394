#include "ui/DesktopApplication.h"

#include "model/Catalogues.h"
#include "model/NameIsolation.h"
#include "ui/windows/QmlModules.h"

#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>
#include <QQuickStyle>
#include <QSessionManager>

namespace brindle {

DesktopApplication::DesktopApplication(int& argc, char** argv) : QApplication(argc, argv) {
    takeLanguage();
    registerQmlModules();
    // What is stock follows the theme, which has been made for this style.
    QQuickStyle::setStyle("Basic");
    setApplicationName("Brindle");
    setDesktopFileName("org.brindle.brindle");
    setQuitOnLastWindowClosed(false);
    connect(this, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) Q_EMIT becameActive();
    });
    // Whether Brindle opens at login is the user's setting, not that of a session that is restored. A logout
    // that is only asked for may still be called off: the program ends when the session does.
    connect(
        this, &QGuiApplication::commitDataRequest, this,
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
}

void DesktopApplication::takeLanguage() {
    const QLocale language(QString::fromStdString(textLanguage()));
    setLayoutDirection(language.textDirection());
    isolateFileNames(language.textDirection() == Qt::RightToLeft);
    removeTranslator(&dialogTexts_);
    // Only where Qt's catalogues are installed.
    if (dialogTexts_.load(language, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&dialogTexts_);
}

bool DesktopApplication::event(QEvent* event) {
    if (event->type() != QEvent::Quit) return QApplication::event(event);
    Q_EMIT sessionEnded();
    return true;
}

bool DesktopApplication::notify(QObject* receiver, QEvent* event) {
#ifdef BRINDLE_HANDLER_TIMES
    const HandlerTimes::Measured measured(handlerTimes_, receiver, event);
#endif
    return QApplication::notify(receiver, event);
}

}  // namespace brindle
