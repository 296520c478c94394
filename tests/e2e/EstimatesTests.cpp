#include "e2e/Records.h"
#include "platform/FileLock.h"
#include "support/TempHistory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Arguments = std::vector<std::string>;

class Estimates : public testing::Test {
protected:
    Estimates() {
        writeFile(tree / "a", 10);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        // As a check would leave them.
        rowsOf(brindle.historyFile(),
               "INSERT INTO estimates (location_id, local_day, folder, name, bytes, file_count, contributor, "
               "made_at) "
               "SELECT id, '2026-01-01', '', 'a', 10, 1, 'a', 1 FROM locations;"
               "UPDATE locations SET estimated_at = 1");
    }

    void expectSays(const Arguments& arguments, const std::string& sentence) const {
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        EXPECT_EQ(result.output, sentence + "\n");
        EXPECT_EQ(result.error, "");
    }
    void expectRefused(int exitCode, const std::string& sentence) const {
        for (const std::string wanted : {"on", "off"}) {
            const auto result = brindle.run({"estimates", wanted});
            EXPECT_EQ(result.exitCode, exitCode);
            EXPECT_THAT(result.error, HasSubstr(sentence));
        }
    }
    [[nodiscard]] nlohmann::json settings() const {
        std::ifstream file(brindle.settingsFile());
        return nlohmann::json::parse(file, nullptr, false);
    }
    /// How many estimates there are, and how many locations that have some.
    [[nodiscard]] std::string made() const {
        return Records(brindle).value(
            "SELECT (SELECT COUNT(*) FROM estimates) || ' ' || COUNT(estimated_at) FROM locations");
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(Estimates, AreOffUntilSwitchedOnAndGoWhenSwitchedOff) {
    expectSays({"estimates"}, "Estimates of earlier history are off.");
    EXPECT_FALSE(fs::exists(brindle.settingsFile())) << "asking changes nothing";
    expectSays({"estimates", "on"}, "Estimates of earlier history are on. The next check makes them.");
    expectSays({"estimates"}, "Estimates of earlier history are on.");
    EXPECT_EQ(made(), "1 1");
    EXPECT_EQ(settings(), nlohmann::json({{"showsEstimates", true}}));

    std::ofstream(brindle.settingsFile()) << R"({"other": [1], "showsEstimates": true})";
    expectSays({"estimates", "off"},
               "Estimates of earlier history are off, and those that were made are removed.");
    EXPECT_EQ(made(), "0 0");
    EXPECT_EQ(Records(brindle).value("SELECT COUNT(*) FROM inventory"), "1");
    EXPECT_EQ(settings(), nlohmann::json({{"other", {1}}, {"showsEstimates", false}}));

    EXPECT_EQ(brindle.json({"estimates", "on"}), nlohmann::json({{"showsEstimates", true}}));
    EXPECT_EQ(brindle.json({"estimates"}), nlohmann::json({{"showsEstimates", true}}));
    EXPECT_EQ(brindle.run({"estimates", "perhaps"}).exitCode, 2);
    expectSays({"estimates"}, "Estimates of earlier history are on.");
}

TEST_F(Estimates, AreMadeOnceByTheNextCheckAndNeverMeasured) {
    // The first check, as if by a clock that was two days ahead: the file is from before it.
    rowsOf(brindle.historyFile(),
           "DELETE FROM estimates; UPDATE locations SET estimated_at = NULL, baseline_at = baseline_at + "
           "172800");
    EXPECT_EQ(brindle.json({"check"})["locations"][0]["estimated"], nullptr);
    EXPECT_EQ(made(), "0 0");
    EXPECT_EQ(brindle.run({"estimates", "on"}).exitCode, 0);
    const auto result = brindle.run({"check"});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_THAT(result.output,
                HasSubstr("Earlier history, estimated from file dates: 10 bytes in 1 file.\n"));
    EXPECT_EQ(made(), "1 1");
    EXPECT_EQ(Records(brindle).value("SELECT COUNT(*) FROM observations"), "0");
    EXPECT_EQ(Records(brindle).value("SELECT COUNT(*) FROM daily_totals"), "0");
    EXPECT_EQ(brindle.json({"check"})["locations"][0]["estimated"], nullptr) << "they are made once";
}

TEST_F(Estimates, AreLeftToWhoeverWorksWithTheHistory) {
    {
        const auto window = FileLock::tryToTake(brindle.dataDirectory() / "window.lock");
        ASSERT_TRUE(window);
        expectRefused(5, "Brindle's window is open. Change this in its settings.\n");
        expectSays({"estimates"}, "Estimates of earlier history are off.");
    }
    {
        const auto check = FileLock::tryToTake(brindle.dataDirectory() / "check.lock");
        ASSERT_TRUE(check);
        expectRefused(5, "is using this storage history. Try again later.\n");
    }
    EXPECT_FALSE(fs::exists(brindle.settingsFile()));
    EXPECT_EQ(made(), "1 1");
    EXPECT_EQ(brindle.run({"estimates", "off"}).exitCode, 0) << "a window that is gone is no obstacle";
}

TEST_F(Estimates, StayWhenTheSettingCannotBeStored) {
    fs::create_directories(brindle.settingsFile().parent_path());
    fs::create_symlink("/dev/null", brindle.settingsFile());
    expectRefused(3, "is a symbolic link and was left as it is.");
    EXPECT_EQ(made(), "1 1");
}

TEST_F(Estimates, SettingsThatAreDamagedAreToldOnceByWhateverCommand) {
    fs::create_directories(brindle.settingsFile().parent_path());
    std::ofstream(brindle.settingsFile()) << "{";
    const auto switched = brindle.run({"estimates", "on"});
    EXPECT_EQ(switched.exitCode, 0);
    EXPECT_THAT(switched.error, HasSubstr("were damaged. They are kept in “"));
    EXPECT_EQ(brindle.run({"estimates", "on"}).error, "");
}

}  // namespace
}  // namespace brindle
