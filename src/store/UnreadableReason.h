#pragma once

namespace brindle {

/// Why a folder stands in the table `unreadable_folders`; the numbers are stored.
enum class UnreadableReason {
    other = 0,
    permission = 1,
    notOnDisk = 2,  // its contents are not there to be read, and that is no fault
};

}  // namespace brindle
