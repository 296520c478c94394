#pragma once

namespace brindle {

/// Makes what is computed from here on, Calendar::current() above all, follow the system's time zone as it is
/// now; before, it is the one that the program found when it first asked. Calendars made earlier keep theirs.
/// Gives whether that changed anything. Any thread.
bool followSystemTimeZone();

}  // namespace brindle
