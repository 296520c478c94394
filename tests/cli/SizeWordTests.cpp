#include "cli/Context.h"
#include "cli/SizeWord.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(SizeWord, IsReadInDecimalAndBinaryUnits) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {"0", 0},
        {"4096", 4096},
        {"4096 bytes", 4096},
        {"500MB", 500'000'000},
        {"1.5GB", 1'500'000'000},
        {"1.5 gb", 1'500'000'000},
        {"2GiB", 2'147'483'648},
        {"9PB", 9'000'000'000'000'000},
        {"0.1kB", 100},
    };
    for (const auto& [text, bytes] : cases) EXPECT_EQ(sizeNamed(text), bytes) << text;
}

TEST(SizeWord, IsRefusedWhereItCouldMeanSomethingElse) {
    for (const char* text : {"", " ", "GB", "-5GB", "+5GB", "5G", "5 GB or so", "1,5GB", "1e3", "0x10", "inf",
                             "nan", "5 G B", "1.5.2MB", "9999999PB", "9223372036854775808"})
        EXPECT_THROW((void)sizeNamed(text), UsageError) << text;
}

}  // namespace
}  // namespace brindle
