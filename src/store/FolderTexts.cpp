#include "store/FolderTexts.h"

#include <vector>

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

const FolderPath& FolderTexts::path(std::string_view folder) {
    // What a check recorded of one folder stands together.
    if (last_ == nullptr || last_->first != folder) {
        auto known = known_.find(folder);
        if (known == known_.end()) {
            if (known_.size() >= limit_) known_.clear();
            known = known_.emplace(folder, splitPath(folder)).first;
        }
        last_ = &*known;
    }
    return last_->second;
}

}  // namespace brindle
