#pragma once

#include "support/TempFolder.h"

#include <clocale>
#include <cstdlib>
#include <libintl.h>
#include <string>

namespace brindle {

/// A language that nobody speaks, for as long as it lives: every text of the program accented and longer by
/// half.
class PseudoLocale {
public:
    PseudoLocale() {
        const std::string make = std::string(BRINDLE_PSEUDO_LOCALE) + " " + folder_.path().string();
        isMade_ = std::system(make.c_str()) == 0;
        std::setlocale(LC_MESSAGES, "C.UTF-8");  // the plain C locale is never translated
        ::setenv("LANGUAGE", "en_XA", 1);
        ::bindtextdomain("brindle", folder_.path().c_str());
        ::bind_textdomain_codeset("brindle", "UTF-8");
    }
    ~PseudoLocale() {
        ::unsetenv("LANGUAGE");
        std::setlocale(LC_MESSAGES, "C");
    }
    PseudoLocale(const PseudoLocale&) = delete;
    PseudoLocale& operator=(const PseudoLocale&) = delete;

    /// False without the tools of gettext.
    [[nodiscard]] bool isMade() const { return isMade_; }

private:
    TempFolder folder_;
    bool isMade_ = false;
};

}  // namespace brindle
