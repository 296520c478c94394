#pragma once

#include <stdexcept>

namespace brindle {

/// An update that cannot be offered; what() is the sentence for the user.
class UpdateError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace brindle
