#include "ui/marks/GridShape.h"
#include "ui/marks/Marks.h"
#include "ui/theme/Palette.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <string>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr const char* name = "org.brindle.brindle";
constexpr int sizes[] = {16, 22, 24, 32, 48, 64, 128, 256, 512};
// Of the tile that the mark stands on, as shares of its side.
constexpr double tileMargin = 1.0 / 32;
constexpr double cornerRadius = 7.0 / 32;
constexpr double markMargin = 5.0 / 32;
// Where there are few pixels the mark needs most of them.
constexpr double smallMarkMargin = 2.0 / 32;
constexpr int largestSmallSize = 24;

std::uint32_t dark(ColorToken token) {
    return themeColor(token).value(ColorScheme::dark, false);
}

ColorToken colorOfPath(std::size_t index) {
    return index == 0 ? ColorToken::accent : ColorToken::text;
}

QImage picture(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto inset = [size](double share) {
        // Whole pixels, so that the smallest are sharp.
        const int margin = static_cast<int>(share * size);
        return QRectF(0, 0, size, size).adjusted(margin, margin, -margin, -margin);
    };
    QPainterPath tile;
    tile.addRoundedRect(inset(tileMargin), cornerRadius * size, cornerRadius * size);
    painter.fillPath(tile, QColor::fromRgb(dark(ColorToken::ground)));
    const QRectF markFrame = inset(size <= largestSmallSize ? smallMarkMargin : markMargin);
    for (std::size_t index = 0; index < marks::brandMark.size(); ++index) {
        const auto shape = GridShape::from(marks::brandMark[index], {marks::brandGrid, marks::brandGrid});
        painter.fillPath(shape.pathIn(markFrame), QColor::fromRgb(dark(colorOfPath(index))));
    }
    return image;
}

std::string scalable() {
    constexpr double side = 32;
    std::string paths;
    for (std::size_t index = 0; index < marks::brandMark.size(); ++index)
        paths += fmt::format("    <path fill=\"#{:06x}\" d=\"{}\"/>\n", dark(colorOfPath(index)),
                             marks::brandMark[index]);
    return fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"128\" height=\"128\" viewBox=\"0 0 {0} {0}\">\n"
        "  <rect x=\"{1}\" y=\"{1}\" width=\"{2}\" height=\"{2}\" rx=\"{3}\" fill=\"#{4:06x}\"/>\n"
        "  <g transform=\"translate({5} {5}) scale({6})\">\n{7}  </g>\n</svg>\n",
        side, tileMargin * side, side * (1 - 2 * tileMargin), cornerRadius * side, dark(ColorToken::ground),
        markMargin * side, side * (1 - 2 * markMargin) / marks::brandGrid, paths);
}

/// In one colour, which the desktop replaces by that of its text.
std::string symbolic() {
    return fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\" viewBox=\"0 0 {0} {0}\">\n"
        "  <path fill=\"#2e3436\" d=\"{1}\"/>\n</svg>\n",
        marks::brandGrid, marks::menuBarGlyph);
}

fs::path fileIn(const fs::path& theme, const std::string& size, const std::string& fileName) {
    const fs::path folder = theme / size / "apps";
    fs::create_directories(folder);
    return folder / fileName;
}

void write(const fs::path& file, const std::string& text) {
    std::ofstream stream(file);
    stream << text;
    if (!stream.flush()) throw std::runtime_error(file.native() + " can't be written");
}

void drawInto(const fs::path& theme) {
    for (const int size : sizes) {
        const auto file = fileIn(theme, fmt::format("{0}x{0}", size), fmt::format("{}.png", name));
        if (!picture(size).save(QString::fromStdString(file.native())))
            throw std::runtime_error(file.native() + " can't be written");
    }
    write(fileIn(theme, "scalable", fmt::format("{}.svg", name)), scalable());
    write(fileIn(theme, "symbolic", fmt::format("{}-symbolic.svg", name)), symbolic());
}

}  // namespace
}  // namespace brindle

/// draw_icons FOLDER: writes the icon in all sizes, in the folders of an icon theme.
int main(int argc, char** argv) {
    try {
        if (argc != 2) throw std::runtime_error("draw_icons takes one folder");
        brindle::drawInto(argv[1]);
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }
}
