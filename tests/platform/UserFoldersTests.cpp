#include "platform/UserFolders.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(UserFolders, TheFolderForDocumentsIsReadAsTheShellWouldReadIt) {
    const struct {
        const char* text;
        std::optional<std::string> folder;
    } cases[] = {
        {"", {}},
        {"XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n", "/home/ann/Dokumente"},
        {"# XDG_DOCUMENTS_DIR=\"$HOME/a\"\nXDG_MUSIC_DIR=\"$HOME/b\"\n  XDG_DOCUMENTS_DIR=\"/media/c\"",
         "/media/c"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/a\"\r\nXDG_DOCUMENTS_DIR=\"$HOME/b\"\r\n", "/home/ann/b"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/\"\n", "/home/ann"},
        {R"(XDG_DOCUMENTS_DIR="$HOME/my \"own\" \$5")", "/home/ann/my \"own\" $5"},
        {"XDG_DOCUMENTS_DIR=\"$HOMEWORK\"\n", {}},
        {"XDG_DOCUMENTS_DIR=\"relative\"\n", {}},
        {"XDG_DOCUMENTS_DIR=\"$HOME/open\n", {}},
    };
    for (const auto& [text, folder] : cases) EXPECT_EQ(documentsNamed(text, "/home/ann"), folder) << text;
}

}  // namespace
}  // namespace brindle
