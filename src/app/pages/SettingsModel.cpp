#include "app/pages/SettingsModel.h"

#include "app/pages/PageText.h"
#include "export/StatementsFolder.h"
#include "model/PlatformText.h"
#include "model/Translation.h"
#include "platform/Mounts.h"
#include "platform/UserFolders.h"

#include <vector>

namespace brindle {

SettingsModel::SettingsModel(AppModel& model, StartupChoices& startup, QObject* parent)
    : QObject(parent), model_(model), startup_(startup), checks_(model), updates_(*model.updates()) {
    connect(model.settings(), &Settings::appearanceChanged, this, &SettingsModel::appearanceChanged);
    connect(model.settings(), &Settings::textSizeChanged, this, &SettingsModel::appearanceChanged);
    connect(&checks_, &CheckSettings::revealRequested, this, &SettingsModel::revealRequested);
}

QStringList SettingsModel::sectionTitles() const {
    return {translated("Appearance"), translated("Storage checks"), translated("Startup"),
            translated("Privacy & data"), translated("Updates")};
}

QStringList SettingsModel::sectionSymbols() const {
    return {"paintbrush", "clock", "power", "hand-raised", "update"};
}

void SettingsModel::setSection(int section) {
    if (section < Appearance || section > Updates || section == section_) return;
    section_ = section;
    Q_EMIT sectionChanged();
}

QStringList SettingsModel::appearances() const {
    return {translated("Dark"), translated("Light"), translated("System")};
}

void SettingsModel::setAppearance(int index) {
    if (index >= 0 && index < appearances().size())
        model_.settings()->setAppearance(static_cast<AppearanceMode>(index));
}

QStringList SettingsModel::textSizes() const {
    return {translated("Standard"), translated("Large"), translated("Extra large")};
}

void SettingsModel::setTextSize(int index) {
    if (index >= 0 && index < textSizes().size())
        model_.settings()->setTextSize(static_cast<TextSize>(index));
}

QString SettingsModel::staysHereText() const {
    return translated(platformText::staysHere);
}

QString SettingsModel::recordsText() const {
    return translated(platformText::notEncrypted);
}

QString SettingsModel::historyFolder() const {
    return shownName(model_.options().dataDirectory);
}

QString SettingsModel::statementsText() const {
    return translated("Where your last statement was saved, or your documents folder before the first one.");
}

void SettingsModel::showStatementsFolder() {
    const auto find = [records = model_.session().exportRecords()] {
        std::vector<std::string> exports;
        try {
            exports = records.recent();
        } catch (const std::exception&) {
            // A history that cannot be read remembers no statement.
        }
        return statementsFolder(exports, documentsFolder(), MountTable::current());
    };
    background_.run(
        find, [this](const std::string& folder) { Q_EMIT revealRequested(folder); },
        [this](const std::exception& error) { Q_EMIT model_.noted(QString::fromStdString(error.what())); });
}

}  // namespace brindle
