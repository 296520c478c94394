#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace brindle {

/// The components of a folder below its location's root; none for the root itself. They never change and are
/// shared by all copies: thousands of changes lie in one folder, and a day may hold a hundred thousand.
class FolderPath {
public:
    using value_type = std::string;
    using const_iterator = std::vector<std::string>::const_iterator;

    FolderPath() = default;
    FolderPath(std::vector<std::string> components)
        : components_(components.empty()
                          ? nullptr
                          : std::make_shared<const std::vector<std::string>>(std::move(components))) {}
    FolderPath(std::initializer_list<std::string> components)
        : FolderPath(std::vector<std::string>(components)) {}

    [[nodiscard]] bool empty() const { return components_ == nullptr; }
    [[nodiscard]] std::size_t size() const { return empty() ? 0 : components_->size(); }
    [[nodiscard]] const_iterator begin() const { return empty() ? const_iterator() : components_->begin(); }
    [[nodiscard]] const_iterator end() const { return empty() ? const_iterator() : components_->end(); }

    /// The folder further up that its first `count` components name; at most size().
    [[nodiscard]] FolderPath first(std::size_t count) const {
        if (count == size()) return *this;
        return std::vector<std::string>(begin(), begin() + static_cast<std::ptrdiff_t>(count));
    }

    /// The same for copies of one path, null for the root, and another for any other path that lives. Equal
    /// paths that were made apart differ in it.
    [[nodiscard]] const void* identity() const { return components_.get(); }

    friend bool operator==(const FolderPath& a, const FolderPath& b) {
        if (a.components_ == b.components_) return true;
        return !a.empty() && !b.empty() && *a.components_ == *b.components_;
    }

    /// Component by component, a prefix first.
    friend std::strong_ordering operator<=>(const FolderPath& a, const FolderPath& b) {
        return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    std::shared_ptr<const std::vector<std::string>> components_;  // null for the root
};

}  // namespace brindle
