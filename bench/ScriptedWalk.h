#pragma once

#include "model/Walk.h"

#include <fmt/format.h>

namespace brindle {

/// So many files in byte order, with paths of about 100 bytes.
inline Walk scriptedFiles(std::int64_t rows) {
    constexpr std::int64_t filesInAFolder = 12;
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

}  // namespace brindle
