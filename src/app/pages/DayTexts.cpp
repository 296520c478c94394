#include "app/pages/DayTexts.h"

#include "analysis/PartialDay.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {

QString drawnState(const DayFigures& figures) {
    if (const auto* recorded = figures.recorded()) return recorded->partial ? "partial" : "recorded";
    if (figures.estimated() != nullptr) return "estimated";
    return figures.gap == DayGap::future ? "future" : "noCheck";
}

QString stateWord(const DayFigures& figures) {
    if (const auto* recorded = figures.recorded())
        return recorded->partial ? translated("Partial") : translated("Recorded");
    if (figures.estimated() != nullptr) return translated("Estimated");
    switch (figures.gap.value_or(DayGap::noCheck)) {
        case DayGap::future:
            return translated("Yet to come");
        case DayGap::notTracked:
            return translated("Not tracked");
        case DayGap::notKept:
            return translated("No longer kept");
        case DayGap::noCheck:
            break;
    }
    return translated("No check");
}

QStringList dayNotes(const DayFigures& figures, const HistorySnapshot& snapshot, const LocationScope& scope) {
    if (figures.gap) return {QString::fromStdString(sentence(*figures.gap, snapshot))};
    if (figures.estimated() != nullptr)
        return {translated("An estimate from the dates of files: no check covers this day.")};
    QStringList notes;
    for (const std::string& reason : partialSentences(snapshot, scope, figures.day))
        notes.push_back(QString::fromStdString(reason));
    return notes;
}

QString dayReading(const std::string& label, const DayFigures& figures) {
    if (const auto* recorded = figures.recorded()) {
        const char* text = recorded->partial
                               ? translated("{0}: net change {1}, {2} added, {3} freed, partial")
                               : translated("{0}: net change {1}, {2} added, {3} freed");
        return pageText(text, label, signedByteAmount(recorded->totals.net()),
                        byteAmount(recorded->totals.added), byteAmount(recorded->totals.freed));
    }
    if (const auto* estimated = figures.estimated())
        return pageText(translated("{0}: about {1} came, estimated from file dates"), label,
                        byteAmount(estimated->totals.bytes));
    return pageText(translated("{0}: {1}"), label, stateWord(figures).toStdString());
}

}  // namespace brindle
