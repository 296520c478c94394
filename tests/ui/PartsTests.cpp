#include "ui/Scene.h"

#include <QAccessible>
#include <QFile>
#include <gtest/gtest.h>

namespace brindle {
namespace {

QByteArray sheet() {
    QFile file(BRINDLE_PARTS_SHEET);
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    return file.readAll();
}

/// Looked at by a person: written to the folder of BRINDLE_PICTURES, if there is one.
void keepPicture(Scene& scene, const QString& name) {
    const QString folder = qEnvironmentVariable("BRINDLE_PICTURES");
    if (folder.isEmpty()) return;
    EXPECT_TRUE(scene.window().grabWindow().save(folder + "/" + name + ".png"));
}

TEST(Parts, NothingIsCutInAnyAppearance) {
    for (const AppearanceMode mode : {AppearanceMode::dark, AppearanceMode::light})
        for (const bool isContrastIncreased : {false, true})
            for (const TextSize size : {TextSize::standard, TextSize::large, TextSize::extraLarge}) {
                Scene scene({.appearance = mode, .textSize = size});
                scene.appearance().setSystem({.isContrastIncreased = isContrastIncreased});
                scene.show(sheet());
                keepPicture(scene,
                            QString("parts-%1-%2-%3").arg(int(mode)).arg(isContrastIncreased).arg(int(size)));
                EXPECT_EQ(scene.warnings(), "");
            }
}

}  // namespace
}  // namespace brindle
