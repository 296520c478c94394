#include "app/pages/DrivesModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ListColumns.h"
#include "app/pages/ShownHistory.h"
#include "model/SpaceBreakdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using testing::StartsWith;

constexpr LocalDay today{2026, 3, 7};
constexpr std::int64_t GB = 1'000'000'000;

/// A field of the parts of the only drive.
std::vector<std::string> partTexts(DrivesModel& page, const QString& field) {
    std::vector<std::string> found;
    for (const QVariant& part : column(*page.drives(), "spaceParts").at(0).toList())
        found.push_back(part.toMap().value(field).toString().toStdString());
    return found;
}

TEST(DrivesModel, ADrivesUsedSpaceIsDividedAndItsOutlookFollows) {
    ShownHistory shown;
    const Calendar calendar = shown.model().calendar();
    auto history = std::make_shared<FixedHistory>();
    history->known.today = today;
    history->include("home", "Home", {2026, 1, 1});
    for (int day = 60; day >= 0; --day)
        history->samples.push_back({.id = "drive",
                                    .name = "Disk",
                                    .mountPath = "/",
                                    .totalBytes = 1000 * GB,
                                    .freeBytes = (250 + day) * GB,
                                    .availableBytes = (300 + day) * GB,
                                    .snapshotCount = 0,
                                    .readAt = calendar.time(calendar.addingDays(today, -day), 12)});
    const VolumeReading& latest = history->known.volumes.emplace_back(history->samples.back());
    history->known.breakdowns["drive"] =
        spaceBreakdown(latest, {.allocatedBytes = 500 * GB, .trashBytes = 20 * GB});

    DrivesModel page(shown.model(), shown.tracking());
    EXPECT_FALSE(page.hasLocations());
    ASSERT_TRUE(shown.show(history));
    EXPECT_THAT(texts(*page.drives(), "used"), ElementsAre("750.0 GB"));
    EXPECT_THAT(texts(*page.drives(), "available"), ElementsAre("300.0 GB available of 1.0 TB"));
    EXPECT_THAT(partTexts(page, "part"), ElementsAre("files", "trash", "notVisible"));
    EXPECT_THAT(partTexts(page, "amount"), ElementsAre("480.0 GB", "20.0 GB", "250.0 GB"));
    EXPECT_THAT(partTexts(page, "share"), ElementsAre("0.48", "0.02", "0.25"));
    const auto notes = [&] { return column(*page.drives(), "notes").at(0).toStringList(); };
    ASSERT_TRUE(runUntil([&] { return notes().size() == 3; }));
    EXPECT_THAT(notes().at(0).toStdString(), StartsWith("At the pace since"));
    EXPECT_THAT(notes().at(1).toStdString(), StartsWith("50.0 GB of the used space"));
    EXPECT_EQ(notes().at(2), "No local snapshots on this volume.");
    const auto moved = column(*page.drives(), "reconciliation").at(0).toStringList();
    EXPECT_THAT(moved, testing::Not(IsEmpty()));
    EXPECT_THAT(moved.front().toStdString(), StartsWith("Used space on “Disk” grew by 7.0 GB between"));
}

TEST(DrivesModel, ALocationTellsItsStateAndItsUnreadableFoldersOnDemand) {
    TempHistory stored;
    stored.include("home");
    stored.include("usb");
    stored.include("new");
    std::vector<UnreadableFolder> unreadable{{"a\nb", true}, {"broken", false}};
    for (int i = 0; i < 250; ++i) unreadable.push_back({"many/" + std::to_string(1000 + i), true});
    stored.check("home", {{"file", 1'234'567}}, {.cloudOnlyBytes = 5 * GB, .unreadable = unreadable});
    stored.check("usb", {{"file", 1}});
    stored.store().setStatus({"usb"}, LocationStatus::disconnected).get();
    stored.close();

    ShownHistory shown;
    ASSERT_TRUE(shown.open(stored.directory()));
    DrivesModel page(shown.model(), shown.tracking());
    EXPECT_THAT(texts(*page.locations(), "status"),
                ElementsAre("Full access", "Disconnected", "Full access"));
    EXPECT_THAT(texts(*page.locations(), "size"), ElementsAre("1.2 MB", "1 byte", ""));
    EXPECT_THAT(texts(*page.locations(), "sizeExact"), ElementsAre("1,234,567 bytes", "1 byte", ""));
    EXPECT_EQ(texts(*page.locations(), "lastCheck").back(), "Not checked yet");
    EXPECT_THAT(texts(*page.locations(), "unreadable"), ElementsAre("252 folders couldn't be read", "", ""));
    EXPECT_EQ(texts(*page.locations(), "cloudOnly").front(),
              "5.0 GB are only in cloud storage and take no space here.");
    EXPECT_THAT(numbers(*page.locations(), "canShow"), ElementsAre(1, 0, 1));

    page.toggleUnreadable(0);
    EXPECT_THAT(numbers(*page.locations(), "isOpen"), ElementsAre(1, 0, 0));
    ASSERT_THAT(page.unreadable()->rowCount(), 200);
    EXPECT_EQ(texts(*page.unreadable(), "path").front(), "a\\nb");
    EXPECT_EQ(texts(*page.unreadable(), "reason").at(0), "Access was refused");
    EXPECT_EQ(texts(*page.unreadable(), "reason").at(1), "Couldn't be read");
    EXPECT_EQ(page.moreUnreadable(), "and 52 more");
    page.toggleUnreadable(0);
    EXPECT_EQ(page.unreadable()->rowCount(), 0);
    EXPECT_EQ(page.moreUnreadable(), "");

    std::vector<std::string> revealed;
    QObject::connect(&page, &DrivesModel::revealRequested,
                     [&](const std::string& path) { revealed.push_back(path); });
    for (const int index : {-1, 0, 1, 3}) page.showInFiles(index);
    EXPECT_THAT(revealed, ElementsAre(shown.model().records().front().path));
}

TEST(DrivesModel, NothingOfTheExampleIsInTheFileManager) {
    ShownHistory shown;
    auto history = std::make_shared<FixedHistory>();
    history->known.today = today;
    history->known.isExample = true;
    history->include("home", "Home", today);
    DrivesModel page(shown.model(), shown.tracking());
    ASSERT_TRUE(shown.show(history));
    EXPECT_THAT(numbers(*page.locations(), "canShow"), ElementsAre(0));
    EXPECT_THAT(page.drives()->rowCount(), 0);
}

}  // namespace
}  // namespace brindle
