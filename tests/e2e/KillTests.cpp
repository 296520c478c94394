#include "e2e/Records.h"
#include "support/Rounds.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr std::uint64_t folderCount = 50;
constexpr std::uint64_t filesAFolder = 80;

class Kill : public testing::Test {
protected:
    Kill() {
        for (std::uint64_t i = 0; i < folderCount; ++i) fs::create_directories(folderPath(i));
        for (std::uint64_t i = 0; i < folderCount * filesAFolder; ++i) resize(i, i);
    }

    [[nodiscard]] fs::path tree() const { return folder.path() / "tree"; }
    [[nodiscard]] fs::path folderPath(std::uint64_t number) const { return tree() / std::to_string(number); }
    [[nodiscard]] fs::path filePath(std::uint64_t number) const {
        return folderPath(number % folderCount) / std::to_string(number);
    }
    void resize(std::uint64_t number, std::uint64_t size) {
        if (!fs::exists(filePath(number))) writeFile(filePath(number), 0);
        fs::resize_file(filePath(number), size);
    }

    void changeSome() {
        for (int i = 0; i < 600; ++i) {
            const std::uint64_t number = random() % (folderCount * filesAFolder * 2);
            if (random() % 3 == 0)
                fs::remove(filePath(number));
            else
                resize(number, random() % 100'000);
        }
    }

    [[nodiscard]] RunningProgram startCheck() const {
        return RunningProgram(brindle.launch({"check", tree()}));
    }

    microseconds timeOfACheck() {
        const auto start = steady_clock::now();
        EXPECT_EQ(startCheck().wait().exitCode, 0);
        return std::chrono::duration_cast<microseconds>(steady_clock::now() - start);
    }

    void killACheckWithin(microseconds time) {
        RunningProgram check = startCheck();
        std::this_thread::sleep_for(microseconds(random() % static_cast<std::uint64_t>(time.count())));
        check.signal(SIGKILL);
        (void)check.wait();
    }

    /// `before`: the records of an earlier check; null when there was none.
    void expectLastCheckOn(const Records& records, const Records* before) const {
        const Listing files = listingOf(tree());
        expectLastCheck(
            records, files,
            before != nullptr ? differencesBetween(before->inventory(), files) : std::vector<Difference>());
    }

    [[nodiscard]] std::set<std::string> namesOfData() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(brindle.dataDirectory()))
            names.insert(entry.path().filename());
        return names;
    }
    void forgetHistory() const { fs::remove_all(brindle.dataDirectory()); }

    TempFolder folder;
    Brindle brindle;
    std::mt19937_64 random;
};

/// Whether a check was committed. Before that there is at most the row of the included location.
bool holdsACheck(const std::vector<std::string>& everything) {
    return everything.size() > 1;
}

TEST_F(Kill, LeavesTheHistoryOfTheLastCommittedCheck) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    random.seed(seed);
    const microseconds firstCheck = timeOfACheck();
    const auto usualNames = namesOfData();
    changeSome();
    const microseconds laterCheck = timeOfACheck();

    int committed = 0;
    for (int round = 0; round < testRounds(75) && !HasFailure(); ++round) {
        SCOPED_TRACE("kill " + std::to_string(round));
        const bool isFirst = round % 3 == 0;
        if (isFirst) forgetHistory();
        changeSome();
        const Records before(brindle);
        killACheckWithin((isFirst ? firstCheck : laterCheck) * 3 / 2);

        const Records after(brindle);
        EXPECT_THAT(after.value("PRAGMA integrity_check"), testing::AnyOf("ok", ""));
        const auto everythingBefore = before.everything();
        const auto everything = after.everything();
        if (everything == everythingBefore) continue;
        if (!holdsACheck(everything)) {
            EXPECT_FALSE(holdsACheck(everythingBefore));
            continue;
        }
        ++committed;
        expectLastCheckOn(after, holdsACheck(everythingBefore) ? &before : nullptr);
    }
    RecordProperty("committed", committed);

    const Records last(brindle);
    changeSome();
    EXPECT_EQ(startCheck().wait().exitCode, 0);
    expectLastCheckOn(Records(brindle), holdsACheck(last.everything()) ? &last : nullptr);
    EXPECT_EQ(namesOfData(), usualNames) << "something is left behind";
}

}  // namespace
}  // namespace brindle
