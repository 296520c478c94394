// brindle_walk TREE: walks once as a check does, counts what it is handed, and prints one line of JSON.

#include "scan/FolderScanner.h"

#include <cstdio>
#include <exception>
#include <fmt/format.h>
#include <sys/resource.h>

int main(int count, char** arguments) try {
    if (count != 2) {
        std::fputs("usage: brindle_walk TREE\n", stderr);
        return 2;
    }
    const auto trees = brindle::makeTreeSource();
    std::size_t files = 0;
    const auto begin = brindle::steadySeconds();
    const auto report = brindle::FolderScanner(*trees).scan(
        arguments[1], {}, {}, [](const auto&) {}, [&](const auto batch) { files += batch.size(); });
    const auto seconds = brindle::steadySeconds() - begin;

    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    fmt::print("{{\"files\": {}, \"bytes\": {}, \"unreadable\": {}, \"seconds\": {:.3f}, \"peakKiB\": {}}}\n",
               files, report.totalBytes, report.unreadable.size(), seconds, usage.ru_maxrss);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "brindle_walk: %s\n", error.what());
    return 3;
}
