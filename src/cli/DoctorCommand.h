#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

namespace brindle {

struct DoctorOptions {
    bool recovers = false;
};

/// `brindle doctor`: looks at the history and at what it needs, and says what is to be done; with --recover,
/// brings what can be read of a damaged history into a new one.
[[nodiscard]] ExitCode runDoctor(const Context& context, const DoctorOptions& options);

}  // namespace brindle
