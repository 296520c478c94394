// brindle_walk [--estimate] TREE: walks once as a check does, counts what it is handed, and prints one line
// of JSON. With --estimate it sorts the files by day as an estimating walk does, those of today included: a
// tree that was only just made is the most that there can be to sort.

#include "model/Retention.h"
#include "scan/EstimateWalk.h"
#include "scan/FolderScanner.h"

#include <cstdio>
#include <exception>
#include <fmt/format.h>
#include <string_view>
#include <sys/resource.h>

namespace brindle {
namespace {

EstimateSpan daysThroughToday() {
    const Calendar calendar = Calendar::current();
    const LocalDay today = calendar.day(systemNow());
    return {firstKeptDay(calendar, today), today, calendar};
}

int walk(const char* root, bool isEstimating) {
    std::size_t files = 0;
    std::size_t rows = 0;
    const EstimateGroupSink countRows = [&rows](const auto groups) { rows += groups.size(); };

    const auto begin = steadySeconds();
    EstimateGrouper grouper(daysThroughToday(), countRows);
    const auto trees = makeTreeSource();
    const auto report = FolderScanner(*trees).scan(
        root, {}, {}, [](const auto&) {},
        [&](const auto batch) {
            files += batch.size();
            if (isEstimating) grouper.add(batch);
        });
    rows += grouper.finish().size();
    const auto seconds = steadySeconds() - begin;

    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    fmt::print(
        "{{\"files\": {}, \"bytes\": {}, \"unreadable\": {}, \"rows\": {}, \"seconds\": {:.3f}, \"peakKiB\": "
        "{}}}\n",
        files, report.totalBytes, report.unreadable.size(), rows, seconds, usage.ru_maxrss);
    return 0;
}

}  // namespace
}  // namespace brindle

int main(int count, char** arguments) try {
    const bool isEstimating = count == 3 && std::string_view(arguments[1]) == "--estimate";
    if (count != 2 && !isEstimating) {
        std::fputs("usage: brindle_walk [--estimate] TREE\n", stderr);
        return 2;
    }
    return brindle::walk(arguments[count - 1], isEstimating);
} catch (const std::exception& error) {
    std::fprintf(stderr, "brindle_walk: %s\n", error.what());
    return 3;
}
