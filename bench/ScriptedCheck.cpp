// brindle_scripted_check DIRECTORY ROWS: one check whose walk is a script, for measuring the database's part
// alone. The location is included at the first call; later ones compare with what the one before left.

#include "store/HistoryStore.h"

#include <cstdlib>
#include <fmt/format.h>

#include "ScriptedWalk.h"

namespace brindle {
namespace {

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
