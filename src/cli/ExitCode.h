#pragma once

namespace brindle {

/// What the terminal program says to a script.
enum class ExitCode {
    success = 0,
    nothingFound = 1,     // what was asked for is not there: no changes, no locations
    limitPassed = 1,      // something grew by more than was asked about
    wrongUsage = 2,       // the command line, or a folder that cannot be included
    historyFailed = 3,    // the history cannot be opened, read or written
    notChecked = 4,       // some location could not be checked
    locked = 5,           // another program is checking
    attentionNeeded = 6,  // `brindle doctor` found something that is to be done
    interrupted = 130,    // stopped by Ctrl-C or another signal
};

}  // namespace brindle
