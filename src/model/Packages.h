#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace brindle {

/// How many components below its location's root the folder lies at most that a change is credited to.
inline constexpr std::size_t contributorDepth = 2;

/// Whether a folder of this name is a package: a folder that people see as one document or program
/// ("Photos.photoslibrary"), told by its extension, ignoring case.
[[nodiscard]] bool isPackage(std::string_view component);

/// How many leading components of a folder path name the folder that a change is credited to: at most
/// `depth`, and never beyond the first package.
[[nodiscard]] std::size_t creditedDepth(std::span<const std::string> components, std::size_t depth);

/// The folder a change is credited to, as a prefix of `folder` (components joined by "/"): at most
/// `contributorDepth` components, never beyond the first package, empty for the root.
[[nodiscard]] std::string_view contributor(std::string_view folder);

}  // namespace brindle
