#pragma once

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <QString>
#include <algorithm>
#include <cstdint>
#include <string>

// How the models of the pages put values into texts and bars.

namespace brindle {

/// A translated text with its places filled in.
template <class... Values>
[[nodiscard]] QString pageText(const char* text, const Values&... values) {
    return QString::fromStdString(filled(text, values...));
}

/// A name or path of the file system, harmless to show.
[[nodiscard]] inline QString shownName(const std::string& bytes) {
    return QString::fromStdString(fileNameText(bytes));
}

/// How much of the whole a part is, 0 to 1.
[[nodiscard]] inline double shareOf(std::int64_t part, std::int64_t whole) {
    return whole > 0 ? std::clamp(static_cast<double>(part) / static_cast<double>(whole), 0.0, 1.0) : 0;
}

}  // namespace brindle
