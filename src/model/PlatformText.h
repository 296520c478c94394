#pragma once

// Sentences that name a thing which not every system has, with the words of each system side by side. They
// pass through translated() where they are shown.

namespace brindle::platformText {

#ifdef __APPLE__
inline constexpr bool isMac = true;
#else
inline constexpr bool isMac = false;
#endif

inline constexpr const char* notLocal =
    isMac ? "Brindle can only check folders on drives connected to this Mac."
          : "Brindle can only check folders on drives connected to this computer.";

inline constexpr const char* snapshotSizes = isMac ? "macOS reports snapshot sizes only to an administrator."
                                                   : "Snapshot sizes are reported only to an administrator.";

}  // namespace brindle::platformText
