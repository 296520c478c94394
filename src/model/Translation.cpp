#include "model/Translation.h"

#include <libintl.h>

namespace brindle {

const char* translated(const char* text) {
    return dgettext("brindle", text);
}

const char* translatedCount(const char* one, const char* many, std::int64_t count) {
    return dngettext("brindle", one, many, static_cast<unsigned long>(count));
}

}  // namespace brindle
