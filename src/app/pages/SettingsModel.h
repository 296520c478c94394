#pragma once

#include "app/AppModel.h"
#include "app/pages/CheckSettings.h"
#include "app/pages/StartupChoices.h"
#include "app/pages/UpdateSettings.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <string>

namespace brindle {

/// What the settings window shows: its sections, and of them the short ones. Every change holds at once.
/// Thread: main.
class SettingsModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList sectionTitles READ sectionTitles CONSTANT)
    Q_PROPERTY(QStringList sectionSymbols READ sectionSymbols CONSTANT)
    Q_PROPERTY(int section READ section WRITE setSection NOTIFY sectionChanged)
    Q_PROPERTY(QStringList appearances READ appearances CONSTANT)
    Q_PROPERTY(int appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
    Q_PROPERTY(QStringList textSizes READ textSizes CONSTANT)
    Q_PROPERTY(int textSize READ textSize WRITE setTextSize NOTIFY appearanceChanged)
    Q_PROPERTY(QString staysHereText READ staysHereText CONSTANT)
    Q_PROPERTY(QString recordsText READ recordsText CONSTANT)
    Q_PROPERTY(QString historyFolder READ historyFolder CONSTANT)
    Q_PROPERTY(QString statementsText READ statementsText CONSTANT)
    Q_PROPERTY(brindle::CheckSettings* checks READ checks CONSTANT)
    Q_PROPERTY(brindle::StartupChoices* startup READ startup CONSTANT)
    Q_PROPERTY(brindle::UpdateSettings* updates READ updates CONSTANT)

public:
    /// In the order of the sidebar.
    enum Section { Appearance, StorageChecks, Startup, Privacy, Updates };
    Q_ENUM(Section)

    /// Both outlive it.
    SettingsModel(AppModel& model, StartupChoices& startup, QObject* parent = nullptr);

    [[nodiscard]] QStringList sectionTitles() const;
    [[nodiscard]] QStringList sectionSymbols() const;  // their names in Symbol.qml
    [[nodiscard]] int section() const { return section_; }
    void setSection(int section);

    [[nodiscard]] QStringList appearances() const;
    [[nodiscard]] int appearance() const { return static_cast<int>(model_.settings()->appearance()); }
    void setAppearance(int index);
    [[nodiscard]] QStringList textSizes() const;
    [[nodiscard]] int textSize() const { return static_cast<int>(model_.settings()->textSize()); }
    void setTextSize(int index);

    [[nodiscard]] QString staysHereText() const;
    [[nodiscard]] QString recordsText() const;
    [[nodiscard]] QString historyFolder() const;
    [[nodiscard]] QString statementsText() const;
    Q_INVOKABLE void showHistoryFolder() { Q_EMIT revealRequested(model_.options().dataDirectory); }
    /// Where the next statement would be saved: beside the latest one that is still there.
    Q_INVOKABLE void showStatementsFolder();

    [[nodiscard]] CheckSettings* checks() { return &checks_; }
    [[nodiscard]] StartupChoices* startup() { return &startup_; }
    [[nodiscard]] UpdateSettings* updates() { return &updates_; }

Q_SIGNALS:
    void sectionChanged();
    void appearanceChanged();
    /// A folder is to be shown in the file manager.
    void revealRequested(const std::string& path);

private:
    AppModel& model_;
    StartupChoices& startup_;
    CheckSettings checks_;
    UpdateSettings updates_;
    int section_ = Appearance;
    Background background_;  // last, so that it ends first
};

}  // namespace brindle
