#include "app/pages/FigureList.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {
namespace {

FigureRow changeFigure(const char* caption, std::int64_t bytes, FigureTone tone) {
    return {.caption = caption,
            .amount = QString::fromStdString(signedByteAmount(bytes)),
            .exact = QString::fromStdString(exactByteAmount(bytes)),
            .tone = bytes == 0 ? FigureTone::neutral : tone,
            .before = {}};
}

}  // namespace

std::unique_ptr<FigureList> makeFigureList() {
    return std::make_unique<FigureList>(
        [](const FigureRow& row) { return row.caption; },
        std::vector<FigureList::Role>{
            {"caption", [](const FigureRow& row) { return row.caption; }},
            {"amount", [](const FigureRow& row) { return row.amount; }},
            {"exact", [](const FigureRow& row) { return row.exact; }},
            {"tone", [](const FigureRow& row) { return static_cast<int>(row.tone); }},
            {"before", [](const FigureRow& row) { return row.before; }}});
}

std::vector<FigureRow> changeFigures(const ChangeTotals& totals) {
    return {changeFigure(translated("Net change"), totals.net(), FigureTone::neutral),
            changeFigure(translated("Added"), totals.added, FigureTone::added),
            changeFigure(translated("Freed"), -totals.freed, FigureTone::freed)};
}

FigureRow estimateFigure(const EstimateTotals& totals) {
    return {.caption = translated("Estimated"),
            .amount = pageText(translated("About {}"), byteAmount(totals.bytes)),
            .exact = QString::fromStdString(exactByteAmount(totals.bytes)),
            .tone = FigureTone::estimated,
            .before = {}};
}

FigureRow sizeFigure(const std::string& caption, std::int64_t bytes) {
    return {.caption = QString::fromStdString(caption),
            .amount = QString::fromStdString(byteAmount(bytes)),
            .exact = QString::fromStdString(exactByteAmount(bytes)),
            .tone = FigureTone::neutral,
            .before = {}};
}

std::vector<FigureRow> dayFigureRows(const DayState& state) {
    if (const auto* recorded = std::get_if<DayRecorded>(&state)) return changeFigures(recorded->totals);
    if (const auto* estimated = std::get_if<DayEstimated>(&state)) return {estimateFigure(estimated->totals)};
    return {};
}

}  // namespace brindle
