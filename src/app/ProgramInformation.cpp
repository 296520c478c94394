#include "app/ProgramInformation.h"

#include "platform/Paths.h"
#include "platform/WholeFile.h"

#include <system_error>

namespace brindle {
namespace {

constexpr std::size_t largestFile = 1U << 16U;

}  // namespace

std::string informationFile(const std::string& program) {
    return joinedPath(parentPath(parentPath(program)), "share/brindle/brindle-info.json");
}

nlohmann::ordered_json readInformation(const std::string& path) {
    try {
        const std::string text = readWholeFile(path, largestFile).value_or("");
        auto information = nlohmann::ordered_json::parse(text, nullptr, false);
        if (information.is_object()) return information;
    } catch (const std::system_error&) {  // as good as missing
    }
    return nlohmann::ordered_json::object();
}

}  // namespace brindle
