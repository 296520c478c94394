#pragma once

#include <functional>

namespace brindle {

/// What a check gives in a child process without any rights of root. False as well when there can be no
/// such child.
[[nodiscard]] bool holdsUnprivileged(const std::function<bool()>& check);

}  // namespace brindle
