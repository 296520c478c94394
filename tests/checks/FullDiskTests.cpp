#include "checks/Coordinator.h"
#include "checks/Maintenance.h"
#include "support/TestMounts.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;

/// A history that is open on a small disk of its own.
class FullDisk : public Coordinator {
protected:
    void SetUp() override {
        SKIP_UNLESS_MOUNTS_WORK();
        fs::create_directory(history.directory());
        disk.emplace(TestMount::memory(history.directory(), "size=600k"));
        include("home");
        writeFiles("first", 100);
        ASSERT_THAT(committedBy(run({{"home"}})), ElementsAre("home"));
        keepUp();
    }
    void TearDown() override {
        end();
        history.close();
    }

    void writeFiles(const std::string& name, int count) const {
        for (int i = 0; i < count; ++i)
            write(fmt::format("home/a folder whose name takes room {:x<100}/{}", i % 3,
                              name + std::to_string(i)),
                  1);
    }
    void keepUp() { maintain(history.store()); }

    [[nodiscard]] fs::path filler() const { return fs::path(history.directory()) / "filler"; }
    void fill() const {
        std::ofstream file(filler());
        while (file << std::string(4096, 'x') << std::flush) {
        }
    }

    [[nodiscard]] HistorySnapshot snapshot() {
        const Calendar calendar = Calendar::current();
        return history.store().snapshot(30, calendar.day(systemNow()), calendar).get();
    }

    std::optional<TestMount> disk;
};

TEST_F(FullDisk, IsToldInASentenceTheHistoryIsReadAndTheNextRunRecordsEverything) {
    for (int time = 0; time < 2; ++time) {
        const auto before = snapshot();
        fill();
        writeFiles("later", 300);
        for (int attempt = 0; attempt < 2; ++attempt) {
            EXPECT_THAT(run({{"home"}}).failures,
                        ElementsAre(Pair(LocationID{"home"},
                                         "There is no room left on the disk for the storage history in “" +
                                             history.directory() + "”.")));
            keepUp();
            EXPECT_EQ(snapshot(), before);
        }
        fs::remove_all(path("home"));
        write("home/a", 10);
        writeFiles("first", 100);
        fs::remove(filler());
        EXPECT_THAT(committedBy(run({{"home"}})), ElementsAre("home"));
    }
    writeFiles("another", 20);
    const auto summary = run({{"home"}});
    ASSERT_THAT(committedBy(summary), ElementsAre("home"));
    EXPECT_EQ(summary.committed.front().totals, (ChangeTotals{20, 0, 20}));
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace brindle
