#include "ui/windows/QmlModules.h"

#include <QtPlugin>

Q_IMPORT_PLUGIN(Brindle_ChartsPlugin)
Q_IMPORT_PLUGIN(Brindle_MarksPlugin)
Q_IMPORT_PLUGIN(Brindle_ModelsPlugin)
Q_IMPORT_PLUGIN(Brindle_PagesPlugin)
Q_IMPORT_PLUGIN(Brindle_PartsPlugin)
Q_IMPORT_PLUGIN(Brindle_SettingsPlugin)
Q_IMPORT_PLUGIN(Brindle_SetupPlugin)
Q_IMPORT_PLUGIN(Brindle_ThemePlugin)
Q_IMPORT_PLUGIN(Brindle_TrayPlugin)
Q_IMPORT_PLUGIN(Brindle_WindowsPlugin)

namespace brindle {

// The imports above do the work, in whatever program holds this file.
void registerQmlModules() {}

}  // namespace brindle
