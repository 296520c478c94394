#include "model/NestedPath.h"

#include "model/TextFolding.h"

#include <algorithm>

namespace brindle {
namespace {

void skipSlashes(std::string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
}

/// Takes the first component off; empty when there is none left.
std::string_view takeComponent(std::string_view& path) {
    skipSlashes(path);
    const auto component = path.substr(0, path.find('/'));
    path.remove_prefix(component.size());
    return component;
}

}  // namespace

std::optional<std::string_view> pathBelow(std::string_view path, std::string_view folder,
                                          bool caseSensitive) {
    for (auto wanted = takeComponent(folder); !wanted.empty(); wanted = takeComponent(folder)) {
        const auto component = takeComponent(path);
        if (caseSensitive ? component != wanted : !equalIgnoringCase(component, wanted)) return {};
    }
    skipSlashes(path);
    return path;
}

}  // namespace brindle
