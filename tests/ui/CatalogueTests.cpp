#include "ui/PseudoLocale.h"
#include "ui/Scene.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

std::string textOf(Scene& scene, const QByteArray& expression) {
    return scene.show("Item { property string text: " + expression + " }")
        .property("text")
        .toString()
        .toStdString();
}

TEST(Catalogue, CountsInTheFormThatFits) {
    Scene scene;
    const auto files = [&](const char* count) {
        return textOf(scene,
                      QByteArray("Catalogue.translatedCount(\"{} file\", \"{} files\", ") + count + ")");
    };
    EXPECT_EQ(files("0"), "0 files");
    EXPECT_EQ(files("1"), "1 file");
    EXPECT_EQ(files("1234567"), "1,234,567 files");
    EXPECT_EQ(textOf(scene, "Catalogue.translated(\"No such text.\")"), "No such text.");
}

TEST(Catalogue, HasTheTextsOfTheCoreAndOfTheWindow) {
    const PseudoLocale locale;
    if (!locale.isMade()) GTEST_SKIP() << "gettext is not installed";
    Scene scene;
    EXPECT_EQ(textOf(scene, "Catalogue.translated(\"Clear\")"), "Çléár lóñg");  // of QML
    EXPECT_EQ(textOf(scene, "Catalogue.translated(\"Not checked yet\")"), "Ñót çhéçkéd ýét lóñg lóñg");
    EXPECT_EQ(textOf(scene,
                     "Catalogue.translatedCount(\"{} location included\", "
                     "\"{} locations included\", 3)"),
              "3 lóçátíóñs íñçlúdéd lóñg lóñg");
}

}  // namespace
}  // namespace brindle
