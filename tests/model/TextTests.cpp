#include "model/FileNameText.h"
#include "model/NumberText.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(ByteAmount, ChoosesTheUnitAfterRounding) {
    const std::pair<std::int64_t, const char*> cases[] = {{0, "0 bytes"},
                                                          {1, "1 byte"},
                                                          {999, "999 bytes"},
                                                          {1000, "1.0 kB"},
                                                          {1049, "1.0 kB"},
                                                          {999'949, "999.9 kB"},
                                                          {999'950, "1.0 MB"},
                                                          {12'400'000'000, "12.4 GB"},
                                                          {-1'500, "\u22121.5 kB"},
                                                          {INT64_MAX, "9,223.4 PB"},
                                                          {INT64_MIN, "\u22129,223.4 PB"}};
    for (const auto& [bytes, text] : cases) EXPECT_EQ(byteAmount(bytes), text);
    EXPECT_EQ(signedByteAmount(1000), "+1.0 kB");
    EXPECT_EQ(signedByteAmount(0), "0 bytes");
    EXPECT_EQ(groupedNumber(1'234'567), "1,234,567");
    EXPECT_EQ(exactByteAmount(12'431'204), "12,431,204 bytes");
    EXPECT_EQ(exactByteAmount(-1), "\u22121 byte");
    EXPECT_EQ(exactByteAmount(INT64_MIN), "\u22129,223,372,036,854,775,807 bytes");
}

TEST(FileNameText, NeverInstructsATerminal) {
    const std::pair<std::string, const char*> cases[] = {
        {"plain – ümläut 漢字 😀.txt", "plain – ümläut 漢字 😀.txt"},
        {"a\nb\tc\rd", "a\\nb\\tc\\rd"},
        {"\x1b[31mred\x7f", "\\x1b[31mred\\x7f"},
        {"\xc2\x9b"
         "31m",
         "\\x9b31m"},  // the one-character form of the escape sequence
        {"photo\u202Egpj.exe", "photo\\u202egpj.exe"},
        {"bad\xff\xfe"
         "end",
         "bad\ufffd\ufffdend"},
        {"cut\xe2\x82", "cut\ufffd"},
        {"", ""}};
    for (const auto& [bytes, text] : cases) EXPECT_EQ(fileNameText(bytes), text);
}

}  // namespace
}  // namespace brindle
