#include "ui/PseudoLocale.h"
#include "ui/Scene.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

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

struct Language {
    const char* name;
    std::vector<std::string> files;  // of 0, 1, 2, 3, 11 and 100
};

class CatalogueOf : public testing::TestWithParam<Language> {};

TEST_P(CatalogueOf, CountsInItsOwnForms) {
    const TestLanguage language(GetParam().name);
    Scene scene;
    std::vector<std::string> files;
    for (const char* count : {"0", "1", "2", "3", "11", "100"})
        files.push_back(
            textOf(scene, QByteArray("Catalogue.translatedCount(\"{} file\", \"{} files\", ") + count + ")"));
    EXPECT_EQ(files, GetParam().files);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, CatalogueOf,
    testing::Values(Language{"de",
                             {"0 Dateien", "1 Datei", "2 Dateien", "3 Dateien", "11 Dateien", "100 Dateien"}},
                    Language{"ar", {"٠ ملف", "ملف واحد", "ملفان", "٣ ملفات", "١١ ملفًا", "١٠٠ ملف"}},
                    Language{"xx", {"0 files", "1 file", "2 files", "3 files", "11 files", "100 files"}}),
    [](const auto& language) { return language.param.name; });

}  // namespace
}  // namespace brindle
