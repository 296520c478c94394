#pragma once

#include <cstdint>
#include <string>

namespace brindle {

/// The number in the user's digits and grouping: "1,240".
[[nodiscard]] std::string groupedNumber(std::int64_t number);

/// A byte amount in the decimal units of the file browser, one digit after the point from kB upwards:
/// "0 bytes", "1 byte", "999 bytes", "1.0 kB", "12.4 GB". The unit is chosen after rounding, so that no
/// amount reads "1,000.0". A negative amount carries the minus sign U+2212.
[[nodiscard]] std::string byteAmount(std::int64_t bytes);

/// byteAmount() with "+" before growth, U+2212 before shrinkage and no sign for zero.
[[nodiscard]] std::string signedByteAmount(std::int64_t bytes);

/// All bytes of an amount: "12,431,204 bytes"; negative with the minus sign U+2212.
[[nodiscard]] std::string exactByteAmount(std::int64_t bytes);

/// An amount of a scale whose lines are `step` apart: in the unit of its `largest` magnitude, with as few
/// digits after the point as the steps need, so that all its lines read alike: "0.5 GB", "1.0 GB". Zero is
/// only "0".
[[nodiscard]] std::string scaleAmount(std::int64_t bytes, std::int64_t step, std::int64_t largest);

}  // namespace brindle
