#include "ui/Scene.h"
#include "ui/marks/GridShape.h"
#include "ui/marks/Marks.h"

#include <QImage>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr QSizeF brandGrid{marks::brandGrid, marks::brandGrid};

TEST(GridShape, FitsTheGridIntoTheMiddleOfARectangle) {
    const GridShape shape = GridShape::from("M0 0 H40 V40 H0 Z", brandGrid);
    EXPECT_EQ(shape.scaleIn({0, 0, 100, 60}), 1.5);
    EXPECT_EQ(shape.pathIn({0, 0, 100, 60}).boundingRect(), QRectF(20, 0, 60, 60));
    EXPECT_EQ(shape.pathIn({7, 9, 40, 80}).boundingRect(), QRectF(7, 29, 40, 40));
}

TEST(GridShape, AStringThatCannotBeParsedDrawsNothing) {
    EXPECT_TRUE(GridShape::from("M0 0 L10 10 C", brandGrid).path.isEmpty());
}

TEST(GridShape, ALineAfterACloseBeginsWhereTheSubpathDid) {
    const auto path = GridShape::from("M10 10 H20 V20 Z H30", brandGrid).path;
    EXPECT_EQ(path.elementAt(path.elementCount() - 2), QPointF(10, 10));
    EXPECT_EQ(path.elementAt(path.elementCount() - 1), QPointF(30, 10));
}

// What the program shows as itself is drawn from these, to the letter.
TEST(Marks, HaveEveryPoint) {
    const auto elements = [](const char* text) {
        return GridShape::from(text, brandGrid).path.elementCount();
    };
    EXPECT_EQ(elements(marks::brandMark[0]), 15);
    EXPECT_STREQ(marks::menuBarGlyph, marks::brandMark[0]);
    EXPECT_EQ(elements(marks::brandMark[1]), 5);
    const int expected[] = {7, 6, 12, 5, 7, 5, 4, 5, 5, 5};
    for (std::size_t index = 0; index < marks::capacityIllustration.size(); ++index)
        EXPECT_EQ(elements(marks::capacityIllustration[index]), expected[index]) << index;
}

/// How many pixels are neither wholly of the ground nor wholly of the mark.
double blurredShare(const QImage& image, QColor ground, QColor mark) {
    int blurred = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (const QRgb pixel = image.pixel(x, y); pixel != ground.rgb() && pixel != mark.rgb()) ++blurred;
    return double(blurred) / (image.width() * image.height());
}

TEST(Marks, AreDrawnAtTheSizeThatTheyAreShownIn) {
    Scene scene;
    double last = 1;
    for (const int size : {40, 80, 160, 320}) {
        scene.show("GridPath { path: MarkPaths.brandMark[0]; grid: MarkPaths.brandGrid; fill: Theme.accent }",
                   {size, size});
        const QImage image = scene.window().grabWindow();
        const double share = blurredShare(image, scene.appearance().color(ColorToken::ground),
                                          scene.appearance().color(ColorToken::accent));
        EXPECT_LT(share, last * 0.7) << "edges stay one pixel wide, however large the mark";
        last = share;
    }
    EXPECT_EQ(scene.warnings(), "");
}

TEST(Marks, FollowTheTheme) {
    Scene scene;
    scene.show(
        "Item { BrandMark { size: 80 } BrandLockup { x: 100; scaleFactor: 2 } "
        "CapacityIllustration { y: 100 } }");
    const auto colorAt = [&](int x, int y) { return scene.window().grabWindow().pixelColor(x, y); };
    EXPECT_EQ(colorAt(60, 40), scene.appearance().color(ColorToken::accent));
    EXPECT_EQ(colorAt(20, 40), scene.appearance().color(ColorToken::text));
    scene.settings().setAppearance(AppearanceMode::light);
    EXPECT_EQ(colorAt(60, 40), scene.appearance().color(ColorToken::accent));
    EXPECT_EQ(scene.warnings(), "");
}

}  // namespace
}  // namespace brindle
