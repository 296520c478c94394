#include "settings/Preferences.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

// Any file of settings gives preferences that make sense. One that is damaged is kept beside it byte for
// byte; in any other a change of one setting leaves the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brindle;
    static const TempFolder folder;
    const fs::path path = folder.path() / "preferences.json";
    const std::string given(reinterpret_cast<const char*>(data), size);
    std::ofstream(path, std::ios::binary) << given;

    const SettingsFile file(path);
    const StoredSettings stored = file.read();
    Preferences preferences = readPreferences(SettingValues(stored.values));
    if (std::ranges::find(checkIntervals, preferences.checkInterval) == checkIntervals.end()) std::abort();
    if (stored.note && contentsOf(folder.path() / "preferences-damaged.json") != given) std::abort();

    preferences.checksPaused = !preferences.checksPaused;
    if (writePreference(file, preferenceKeys::checksPaused, preferences.checksPaused)) std::abort();
    if (readPreferences(SettingValues(file.read().values)) != preferences) std::abort();
    fs::remove(folder.path() / "preferences-damaged.json");
    return 0;
}
