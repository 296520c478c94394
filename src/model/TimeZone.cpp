#include "model/TimeZone.h"

#include <memory>
#include <unicode/timezone.h>

namespace brindle {

bool followSystemTimeZone() {
    const std::unique_ptr<icu::TimeZone> before(icu::TimeZone::createDefault());
    std::unique_ptr<icu::TimeZone> now(icu::TimeZone::detectHostTimeZone());
    if (!now || *now == *before) return false;
    icu::TimeZone::adoptDefault(now.release());
    return true;
}

}  // namespace brindle
