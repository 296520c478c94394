#include "ui/theme/TabularFont.h"

#include <QByteArray>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QRawFont>
#include <QtEndian>
#include <array>
#include <cmath>
#include <vector>

namespace brindle {
namespace {

constexpr const char* family = "Brindle Figures";

// Every table that lays out and draws text. The names are written anew, and what only hints is left out.
constexpr std::array tableNames{"CFF ", "GDEF", "GPOS", "GSUB", "OS/2", "cmap", "glyf",
                                "head", "hhea", "hmtx", "loca", "maxp", "name", "post"};

struct Table {
    QByteArray name;
    QByteArray content;
};

template <class Number>
void append(QByteArray& bytes, Number number) {
    const Number bigEndian = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
}

/// Makes tabular figures a substitution that applies without being asked for. False without one.
bool makeTabularFiguresRequired(QByteArray& substitutions) {
    constexpr qsizetype featureListAt = 6;
    if (substitutions.size() < featureListAt + 2) return false;
    const qsizetype list = qFromBigEndian<quint16>(substitutions.constData() + featureListAt);
    if (substitutions.size() < list + 2) return false;
    const qsizetype count = qFromBigEndian<quint16>(substitutions.constData() + list);
    bool isFound = false;
    for (qsizetype index = 0; index < count; ++index) {
        constexpr qsizetype recordSize = 6;
        const qsizetype tag = list + 2 + index * recordSize;
        if (substitutions.size() < tag + recordSize) break;
        if (substitutions.mid(tag, 4) != "tnum") continue;
        substitutions.replace(tag, 4, "rlig");
        isFound = true;
    }
    return isFound;
}

/// Under a name of its own, as the system's font keeps its name.
QByteArray nameTable(const QString& style) {
    const std::array<std::pair<quint16, QString>, 4> names{{
        {1, family},
        {2, style},
        {4, QString("%1 %2").arg(family, style)},
        {6, QString("BrindleFigures-%1").arg(QString(style).remove(' '))},
    }};
    QByteArray records;
    QByteArray texts;
    for (const auto& [id, text] : names) {
        const auto begin = texts.size();
        for (const QChar letter : text) append(texts, letter.unicode());
        // Windows, Unicode, American English.
        for (const quint16 field : {quint16{3}, quint16{1}, quint16{0x409}, id}) append(records, field);
        append(records, static_cast<quint16>(texts.size() - begin));
        append(records, static_cast<quint16>(begin));
    }
    QByteArray table;
    append(table, quint16{0});
    append(table, static_cast<quint16>(names.size()));
    append(table, static_cast<quint16>(6 + records.size()));
    return table + records + texts;
}

QByteArray fontFile(const std::vector<Table>& tables) {
    constexpr qsizetype headerSize = 12;
    constexpr qsizetype recordSize = 16;
    const auto count = static_cast<quint16>(tables.size());
    const int powers = static_cast<int>(std::log2(count));
    const auto searched = static_cast<quint16>(16 << powers);

    QByteArray file;
    append(file, tables.front().name == "CFF " ? quint32{0x4F54544F} : quint32{0x00010000});
    append(file, count);
    append(file, searched);
    append(file, static_cast<quint16>(powers));
    append(file, static_cast<quint16>(16 * count - searched));
    QByteArray contents;
    for (const Table& table : tables) {
        file += table.name;
        append(file, quint32{0});  // no checksum: what reads it has just been written
        append(file, static_cast<quint32>(headerSize + recordSize * count + contents.size()));
        append(file, static_cast<quint32>(table.content.size()));
        contents += table.content;
        contents.resize((contents.size() + 3) / 4 * 4, '\0');
    }
    return file + contents;
}

QByteArray tabularCopy(const QFont& font) {
    const QRawFont raw = QRawFont::fromFont(font);
    std::vector<Table> tables;
    bool isTabular = false;
    for (const char* name : tableNames) {
        Table table{name, raw.fontTable(name)};
        if (table.name == "GSUB") isTabular = makeTabularFiguresRequired(table.content);
        if (table.name == "name") table.content = nameTable(raw.styleName());
        if (!table.content.isEmpty()) tables.push_back(std::move(table));
    }
    return isTabular ? fontFile(tables) : QByteArray();
}

QString systemTabularFamily(const QFont& font) {
    for (const char* known : {"Noto Sans", "Cantarell", "Open Sans", "Liberation Sans", "DejaVu Sans"}) {
        QFont candidate(font);
        candidate.setFamily(known);
        if (QFontDatabase::hasFamily(known) && hasTabularDigits(candidate)) return known;
    }
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

}  // namespace

bool hasTabularDigits(const QFont& font) {
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance("0000000000");
    for (const char digit : {'1', '2', '3', '4', '5', '6', '7', '8', '9'})
        if (std::abs(metrics.horizontalAdvance(QString(10, QChar(digit))) - width) > width / 200)
            return false;
    return true;
}

QString tabularFamily(const QFont& font) {
    if (hasTabularDigits(font)) return font.family();
    const int id = QFontDatabase::addApplicationFontFromData(tabularCopy(font));
    if (id >= 0) {
        QFont copy(font);
        copy.setFamily(QFontDatabase::applicationFontFamilies(id).value(0));
        if (hasTabularDigits(copy)) return copy.family();
        QFontDatabase::removeApplicationFont(id);
    }
    return systemTabularFamily(font);
}

}  // namespace brindle
