#pragma once

#include "support/TempFolder.h"
#include "ui/TestLanguage.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace brindle {

/// A language that nobody speaks, for as long as it lives: every text of the program accented and longer by
/// half.
class PseudoLocale {
public:
    PseudoLocale() {
        const std::string make = std::string(BRINDLE_PSEUDO_LOCALE) + " " + folder_.path().string();
        isMade_ = std::system(make.c_str()) == 0;
        language_.emplace("en_XA", folder_.path().string());
    }

    /// False without the tools of gettext.
    [[nodiscard]] bool isMade() const { return isMade_; }

private:
    TempFolder folder_;
    bool isMade_ = false;
    std::optional<TestLanguage> language_;
};

}  // namespace brindle
