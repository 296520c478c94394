#pragma once

#include "app/pages/AboutModel.h"
#include "app/pages/ActivityModel.h"
#include "app/pages/CheckSettings.h"
#include "app/pages/DrivesModel.h"
#include "app/pages/ExplorerModel.h"
#include "app/pages/ExportModel.h"
#include "app/pages/FirstCheckModel.h"
#include "app/pages/LocationActionsModel.h"
#include "app/pages/LocationChoice.h"
#include "app/pages/MiniWindowModel.h"
#include "app/pages/OverviewModel.h"
#include "app/pages/ScopeModel.h"
#include "app/pages/SettingsModel.h"
#include "app/pages/SetupModel.h"
#include "app/pages/StartupChoices.h"
#include "app/pages/StorageHistoryModel.h"
#include "app/pages/TrendsModel.h"
#include "app/pages/UpdateSettings.h"
#include "app/pages/WindowModel.h"

#include <QtQml/qqml.h>

// The models of the pages as QML knows them. They are made in C++ and handed to the pages that show them.

namespace brindle {

struct AboutModelType {
    Q_GADGET
    QML_FOREIGN(brindle::AboutModel)
    QML_NAMED_ELEMENT(AboutModel)
    QML_UNCREATABLE("made with the program")
};

struct ActivityModelType {
    Q_GADGET
    QML_FOREIGN(brindle::ActivityModel)
    QML_NAMED_ELEMENT(ActivityModel)
    QML_UNCREATABLE("made with the program")
};

struct CheckSettingsType {
    Q_GADGET
    QML_FOREIGN(brindle::CheckSettings)
    QML_NAMED_ELEMENT(CheckSettings)
    QML_UNCREATABLE("made with the program")
};

struct ExplorerModelType {
    Q_GADGET
    QML_FOREIGN(brindle::ExplorerModel)
    QML_NAMED_ELEMENT(ExplorerModel)
    QML_UNCREATABLE("made with the program")
};

struct ExportModelType {
    Q_GADGET
    QML_FOREIGN(brindle::ExportModel)
    QML_NAMED_ELEMENT(ExportModel)
    QML_UNCREATABLE("made with the program")
};

struct ScopeModelType {
    Q_GADGET
    QML_FOREIGN(brindle::ScopeModel)
    QML_NAMED_ELEMENT(ScopeModel)
    QML_UNCREATABLE("made with the program")
};

struct DrivesModelType {
    Q_GADGET
    QML_FOREIGN(brindle::DrivesModel)
    QML_NAMED_ELEMENT(DrivesModel)
    QML_UNCREATABLE("made with the program")
};

struct LocationActionsModelType {
    Q_GADGET
    QML_FOREIGN(brindle::LocationActionsModel)
    QML_NAMED_ELEMENT(LocationActionsModel)
    QML_UNCREATABLE("made with the program")
};

struct MiniWindowModelType {
    Q_GADGET
    QML_FOREIGN(brindle::MiniWindowModel)
    QML_NAMED_ELEMENT(MiniWindowModel)
    QML_UNCREATABLE("made with the program")
};

struct OverviewModelType {
    Q_GADGET
    QML_FOREIGN(brindle::OverviewModel)
    QML_NAMED_ELEMENT(OverviewModel)
    QML_UNCREATABLE("made with the program")
};

struct SettingsModelType {
    Q_GADGET
    QML_FOREIGN(brindle::SettingsModel)
    QML_NAMED_ELEMENT(SettingsModel)
    QML_UNCREATABLE("made with the program")
};

struct FirstCheckModelType {
    Q_GADGET
    QML_FOREIGN(brindle::FirstCheckModel)
    QML_NAMED_ELEMENT(FirstCheckModel)
    QML_UNCREATABLE("made with the program")
};

struct LocationChoiceType {
    Q_GADGET
    QML_FOREIGN(brindle::LocationChoice)
    QML_NAMED_ELEMENT(LocationChoice)
    QML_UNCREATABLE("made with the program")
};

struct SetupModelType {
    Q_GADGET
    QML_FOREIGN(brindle::SetupModel)
    QML_NAMED_ELEMENT(SetupModel)
    QML_UNCREATABLE("made with the program")
};

struct StartupChoicesType {
    Q_GADGET
    QML_FOREIGN(brindle::StartupChoices)
    QML_NAMED_ELEMENT(StartupChoices)
    QML_UNCREATABLE("made with the program")
};

struct StorageHistoryModelType {
    Q_GADGET
    QML_FOREIGN(brindle::StorageHistoryModel)
    QML_NAMED_ELEMENT(StorageHistoryModel)
    QML_UNCREATABLE("made with the program")
};

struct TrendsModelType {
    Q_GADGET
    QML_FOREIGN(brindle::TrendsModel)
    QML_NAMED_ELEMENT(TrendsModel)
    QML_UNCREATABLE("made with the program")
};

struct UpdateSettingsType {
    Q_GADGET
    QML_FOREIGN(brindle::UpdateSettings)
    QML_NAMED_ELEMENT(UpdateSettings)
    QML_UNCREATABLE("made with the program")
};

struct WindowModelType {
    Q_GADGET
    QML_FOREIGN(brindle::WindowModel)
    QML_NAMED_ELEMENT(WindowModel)
    QML_UNCREATABLE("made with the program")
};

}  // namespace brindle
