#pragma once

namespace brindle {

/// Lets the calling thread, and those that it starts from then on, give way to everybody else's work, for as
/// long as they live: a user without special rights cannot take the priority back. A system that refuses is
/// no error.
void lowerCpuPriority();

}  // namespace brindle
