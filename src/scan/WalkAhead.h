#pragma once

#include "model/Walk.h"

namespace brindle {

/// The same walk on a thread of its own, a few batches ahead of the sink, so that reading the disk and
/// recording what was read go on at the same time.
///
/// The sink is called on the thread that calls the walk, and what it throws ends the walk and is thrown
/// there; so is what the walk throws. Progress and everything else of the walk happens on its own thread.
[[nodiscard]] Walk walkAhead(Walk walk);

}  // namespace brindle
