#include "model/NumberText.h"

#include "model/UserLocale.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

namespace brindle {
namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::NumberFormatter;
using icu::number::Precision;

constexpr std::string_view minusSign = "\u2212";

template <class Number>
std::string formatted(const LocalizedNumberFormatter& formatter, Number number) {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    icu::UnicodeString result;
    if constexpr (std::is_integral_v<Number>)
        result = formatter.formatInt(number, status).toString(status);
    else
        result = formatter.formatDouble(number, status).toString(status);
    if (U_FAILURE(status)) throw std::runtime_error("A number couldn't be formatted.");
    return result.toUTF8String(text);
}

icu::MeasureUnit unitOf(std::size_t thousands) {
    switch (thousands) {
        case 1:
            return icu::MeasureUnit::getKilobyte();
        case 2:
            return icu::MeasureUnit::getMegabyte();
        case 3:
            return icu::MeasureUnit::getGigabyte();
        case 4:
            return icu::MeasureUnit::getTerabyte();
        default:
            return icu::MeasureUnit::getPetabyte();
    }
}

// One set a thread: building a formatter costs far more than using it.
struct Formatters {
    std::string locale;
    LocalizedNumberFormatter integer;
    LocalizedNumberFormatter bytes;
    std::array<LocalizedNumberFormatter, 6> units;  // by thousands; the first is not used
};

const Formatters& formatters() {
    thread_local Formatters made;
    if (std::string locale = userLocale(); made.locale != locale) {
        const icu::Locale name(locale.c_str());
        made.locale = std::move(locale);
        made.integer = NumberFormatter::withLocale(name);
        made.bytes = NumberFormatter::withLocale(name)
                         .unit(icu::MeasureUnit::getByte())
                         .unitWidth(UNUM_UNIT_WIDTH_FULL_NAME);
        for (std::size_t i = 1; i < made.units.size(); ++i)
            made.units.at(i) = NumberFormatter::withLocale(name)
                                   .unit(unitOf(i))
                                   .unitWidth(UNUM_UNIT_WIDTH_SHORT)
                                   .precision(Precision::fixedFraction(1));
    }
    return made;
}

/// The text with the minus sign where the amount is negative.
std::string withSign(std::int64_t bytes, const std::string& text) {
    return bytes < 0 ? std::string(minusSign) + text : text;
}

std::string magnitude(double bytes) {
    if (bytes < 1000) return formatted(formatters().bytes, static_cast<std::int64_t>(bytes));
    constexpr double roundsUp = 999.95;
    std::size_t thousands = 1;
    double value = bytes / 1000;
    while (value >= roundsUp && thousands < 5) {
        value /= 1000;
        ++thousands;
    }
    return formatted(formatters().units.at(thousands), value);
}

}  // namespace

std::string groupedNumber(std::int64_t number) {
    return formatted(formatters().integer, number);
}

std::string byteAmount(std::int64_t bytes) {
    return withSign(bytes, magnitude(std::abs(static_cast<double>(bytes))));
}

std::string signedByteAmount(std::int64_t bytes) {
    return bytes > 0 ? "+" + byteAmount(bytes) : byteAmount(bytes);
}

std::string exactByteAmount(std::int64_t bytes) {
    return withSign(bytes, formatted(formatters().bytes, std::abs(std::max(bytes, -INT64_MAX))));
}

std::string scaleAmount(std::int64_t bytes, std::int64_t step, std::int64_t largest) {
    if (bytes == 0) return groupedNumber(0);
    std::size_t thousands = 0;
    std::int64_t unit = 1;
    for (; thousands < 5 && std::abs(largest) / 1000 >= unit; ++thousands) unit *= 1000;
    const std::int64_t magnitude = std::abs(bytes);
    if (thousands == 0) return withSign(bytes, formatted(formatters().bytes, magnitude));
    int digits = 0;
    for (std::int64_t smallest = unit; smallest > 1 && step % smallest != 0; smallest /= 10) ++digits;
    return withSign(bytes,
                    formatted(formatters().units.at(thousands).precision(Precision::fixedFraction(digits)),
                              static_cast<double>(magnitude) / static_cast<double>(unit)));
}

}  // namespace brindle
