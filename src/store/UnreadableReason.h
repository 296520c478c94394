#pragma once

namespace brindle {

/// Why a folder stands in the table `unreadable_folders`; the numbers are stored.
enum class UnreadableReason {
    other = 0,
    permission = 1,
    // Its contents were not there to be counted, and that is no fault: they are on no disk of this computer,
    // are left out of the count, or belonged to a location that was removed since.
    notOnDisk = 2,
};

}  // namespace brindle
