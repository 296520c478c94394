// brindle_scripted_check DIRECTORY ROWS: one check whose walk is a script, for measuring the database's part
// alone. The location is included at the first call; later ones compare with what the one before left.

#include "store/HistoryStore.h"

#include <cstdlib>
#include <fmt/format.h>

namespace brindle {
namespace {

constexpr std::int64_t filesInAFolder = 12;

/// So many files in byte order, with paths of about 100 bytes.
Walk scriptedFiles(std::int64_t rows) {
    return [rows](const EntrySink& sink) {
        ScanReport report{.filesSeen = rows};
        std::vector<ScanEntry> batch;
        batch.reserve(scanBatchLimit);
        for (std::int64_t i = 0; i < rows; ++i) {
            batch.push_back({fmt::format("Documents of the year/Projects and more/folder {:08}/"
                                         "some file with an ordinary name {:04}.dat",
                                         i / filesInAFolder, i % filesInAFolder),
                             i % 10'007, 0});
            report.totalBytes += batch.back().size;
            if (batch.size() < scanBatchLimit) continue;
            sink(batch);
            batch.clear();
        }
        if (!batch.empty()) sink(batch);
        return report;
    };
}

LocationRecord location(HistoryStore& store) {
    if (auto records = store.loadLocations().get(); !records.empty()) return records.front();
    store.insert({.id = {"scripted"}, .name = "scripted", .path = "/scripted", .scanPath = "/scripted"})
        .get();
    return store.loadLocations().get().front();
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    using namespace brindle;
    if (argc != 3) {
        fmt::print(stderr, "usage: brindle_scripted_check DIRECTORY ROWS\n");
        return 2;
    }
    HistoryStore store(argv[1]);
    const LocationRecord record = location(store);
    static_cast<void>(store.commit({.record = record, .walk = scriptedFiles(std::atoll(argv[2]))}).get());
    return 0;
}
