#pragma once

#include "model/Catalogues.h"
#include "ui/DesktopApplication.h"

#include <clocale>
#include <cstdlib>
#include <string>
#include <unicode/locid.h>

namespace brindle {

/// The program in another language, for as long as it lives.
class TestLanguage {
public:
    explicit TestLanguage(const char* language, const std::string& catalogues = BRINDLE_CATALOGUES) {
        std::setlocale(LC_MESSAGES, "C.UTF-8");  // the plain C locale is never translated
        ::setenv("LANGUAGE", language, 1);
        useCatalogues(catalogues);
        application().takeLanguage();
    }
    ~TestLanguage() {
        ::unsetenv("LANGUAGE");
        std::setlocale(LC_MESSAGES, "C");
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(before_, status);
        application().takeLanguage();
    }
    TestLanguage(const TestLanguage&) = delete;
    TestLanguage& operator=(const TestLanguage&) = delete;

private:
    static DesktopApplication& application() { return static_cast<DesktopApplication&>(*qApp); }

    icu::Locale before_;
};

}  // namespace brindle
