#include "store/HistoryStore.h"
#include "support/TempFolder.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace brindle;

const LocalDay firstDay{2026, 1, 1};
const LocalDay lastDay{2026, 12, 31};
constexpr UnixTime noon = 1'772'884'800;  // of 2026-03-07

CheckRequest checkOf(int files, int grown, const Calendar& calendar) {
    const auto walk = [=](const EntrySink& sink) {
        for (int i = 0; i < files; ++i) {
            const ScanEntry entry{"folder" + std::to_string(100 + i), i * grown + 1, 0};
            sink(std::span(&entry, 1));
        }
        return ScanReport{.unreadable = {{"locked", true}}};
    };
    const auto now = [=] { return noon + grown; };
    return {.record = {.id = {"home"}}, .walk = walk, .now = now, .calendar = calendar};
}

/// The file of a history with something in every table.
std::string wholeFile() {
    const TempFolder folder;
    const Calendar calendar("en_US", "UTC");
    {
        HistoryStore store(folder.path());
        store.insert({.id = {"home"}, .name = "home", .path = "/home", .scanPath = "/home", .volumeID = "v"})
            .get();
        for (const int grown : {1, 2, 3}) store.commit(checkOf(60, grown, calendar)).get();
        store.recordExport("/statement.csv", noon).get();
    }
    std::ifstream file(folder.path() / "History.sqlite", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Everything that is done with a history.
void use(const fs::path& directory) {
    const Calendar calendar("en_US", "UTC");
    HistoryStore store(directory);
    const auto attempt = [](auto&& ask) {
        try {
            static_cast<void>(ask().get());
        } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): it says what is wrong, and goes on
        }
    };
    attempt([&] { return store.loadLocations(); });
    attempt([&] { return store.snapshot(30, {2026, 3, 7}, calendar); });
    attempt([&] { return store.changes(firstDay, lastDay, {}); });
    attempt([&] { return store.contributors(firstDay, lastDay, {}, 5); });
    attempt([&] { return store.estimates(firstDay, lastDay, {}); });
    attempt([&] { return store.sampleInventory({"home"}, 10); });
    attempt([&] { return store.unreadableFolders({"home"}); });
    attempt([&] { return store.capacitySamples("v", firstDay, lastDay); });
    attempt([&] { return store.recentExports(); });
    try {
        static_cast<void>(store.commit(checkOf(50, 4, calendar)).get());
        store.prune({2026, 3, 8}).get();
        store.remove({"home"}, noon).get();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): likewise
    }
}

}  // namespace

// A history whose file was changed anywhere is used, or refused with a sentence. Four bytes of the input name
// a place in the file and what is put there; the place behind the end cuts the file off.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string whole = wholeFile();
    std::string file = whole;
    for (std::size_t i = 0; i + 3 < size; i += 4) {
        const std::size_t place =
            (std::size_t{data[i]} << 16U) + (std::size_t{data[i + 1]} << 8U) + data[i + 2];
        if (place < file.size())
            file[place] = static_cast<char>(data[i + 3]);
        else if (place < whole.size() + 64)
            file.resize(file.size() * data[i + 3] / 256);
    }
    const TempFolder folder;
    fs::permissions(folder.path(), fs::perms::owner_all);
    std::ofstream(folder.path() / "History.sqlite", std::ios::binary) << file;
    try {
        use(folder.path());
    } catch (const std::exception&) {
        return 0;
    }
    return 0;
}
