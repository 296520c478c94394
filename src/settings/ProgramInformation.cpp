#include "settings/ProgramInformation.h"

#include "platform/Paths.h"
#include "platform/WholeFile.h"

#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

namespace brindle {
namespace {

constexpr std::size_t largestInformation = 1U << 16U;

std::string besideProgram(const std::string& program, const char* file) {
    return joinedPath(parentPath(parentPath(program)), file);
}

}  // namespace

std::string informationFile(const std::string& program) {
    return besideProgram(program, "share/brindle/brindle-info.json");
}

std::string cataloguesFolder(const std::string& program) {
    return besideProgram(program, "share/locale");
}

SettingValues readInformation(const std::string& path) {
    try {
        const std::string text = readWholeFile(path, largestInformation).value_or("");
        auto information = nlohmann::ordered_json::parse(text, nullptr, false);
        if (information.is_object()) return SettingValues(std::move(information));
    } catch (const std::system_error&) {  // as good as missing
    }
    return SettingValues();
}

}  // namespace brindle
