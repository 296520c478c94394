#include "store/FolderTexts.h"

namespace brindle {
namespace {

std::vector<std::string> splitPath(std::string_view path) {
    std::vector<std::string> components;
    while (!path.empty()) {
        const auto slash = path.find('/');
        components.emplace_back(path.substr(0, slash));
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    return components;
}

}  // namespace

const std::vector<std::string>& FolderTexts::components(std::string_view folder) {
    auto known = known_.find(folder);
    if (known == known_.end()) known = known_.emplace(folder, splitPath(folder)).first;
    return known->second;
}

}  // namespace brindle
