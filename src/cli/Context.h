#pragma once

#include "cli/Output.h"
#include "model/Calendar.h"
#include "store/HistoryStore.h"

#include <stdexcept>
#include <string>

namespace brindle {

/// What every command works with.
struct Context {
    std::string dataDirectory;
    bool asJson = false;
    Output& output;
    Calendar calendar = Calendar::current();

    [[nodiscard]] HistoryStore openHistory() const { return HistoryStore(dataDirectory); }
};

/// A command line that makes no sense. what() is the sentence for the user.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace brindle
