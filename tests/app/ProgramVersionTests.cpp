#include "app/UpdateController.h"
#include "support/Program.h"
#include "support/TempFolder.h"

#include <QByteArray>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace brindle {
namespace {

TEST(ProgramVersion, IsComparedByNumbersAndThenByWhatComesBefore) {
    const std::vector<std::vector<const char*>> ascending{
        {"0", "0.0"}, {"0.9"}, {"1~alpha"}, {"1.0~beta2"}, {"1.0.0~beta10"}, {"1", "1.0", "1.0.0"},
        {"1.0.1"},    {"1.2"}, {"1.10"},    {"2"},         {"2026.11.21"}};
    for (std::size_t i = 0; i < ascending.size(); ++i)
        for (std::size_t j = 0; j < ascending.size(); ++j)
            for (const char* left : ascending[i])
                for (const char* right : ascending[j])
                    EXPECT_EQ(ProgramVersion::from(left).value() <=> ProgramVersion::from(right).value(),
                              i <=> j)
                        << left << " and " << right;
    for (const char* none :
         {"", "v1", "1.", ".1", "1..2", "-1", "1 ", "1.0-2", "1~", "1~beta2x", "1~2", "4294967296"})
        EXPECT_EQ(ProgramVersion::from(none), std::nullopt) << none;
}

// The commands of docs/UPDATES.md.
TEST(UpdateKey, FitsSignaturesMadeWithOpenssl) {
    const TempFolder folder;
    const std::string script =
        "openssl genpkey -algorithm ed25519 -out key.pem && printf 'a package' >brindle.deb &&"
        "openssl pkey -in key.pem -pubout -outform DER | tail -c 32 | base64 &&"
        "openssl pkeyutl -sign -inkey key.pem -rawin -in brindle.deb | base64 -w 0";
    const auto result = runProgram(
        {.arguments = {"sh", "-c", script}, .environment = {"PATH=/usr/bin:/bin"}, .folder = folder.path()});
    ASSERT_EQ(result.exitCode, 0) << result.error;
    const auto lines = QByteArray::fromStdString(result.output).split('\n');
    const auto key = UpdateKey::from(lines.at(0).toStdString());
    const auto signature = QByteArray::fromBase64(lines.at(1));
    const std::string package = folder.path() / "brindle.deb";
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->hasSigned(package, 9, signature));
    EXPECT_FALSE(key->hasSigned(package, 8, signature));
    EXPECT_FALSE(key->hasSigned(package + ".gone", 9, signature));
    EXPECT_FALSE(key->hasSigned(package, 9, signature.chopped(1)));
}

}  // namespace
}  // namespace brindle
