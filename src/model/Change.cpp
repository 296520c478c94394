#include "model/Change.h"

#include "model/CheckedSum.h"
#include "model/NumberText.h"
#include "model/RawText.h"
#include "model/Translation.h"

#include <array>

namespace brindle {
namespace {

constexpr RawTextRow<ChangeAction> actions[] = {{ChangeAction::added, "added"},
                                                {ChangeAction::grew, "grew"},
                                                {ChangeAction::shrank, "shrank"},
                                                {ChangeAction::removed, "removed"}};

constexpr RawTextRow<ChangeSource> sources[] = {{ChangeSource::measured, "measured"},
                                                {ChangeSource::estimated, "estimated"}};

constexpr RawTextRow<DirectionFilter> directions[] = {
    {DirectionFilter::all, "all"}, {DirectionFilter::added, "added"}, {DirectionFilter::freed, "freed"}};

}  // namespace

std::string_view rawText(ChangeAction action) {
    return rawTextOf<ChangeAction>(actions, action);
}
std::string_view rawText(ChangeSource source) {
    return rawTextOf<ChangeSource>(sources, source);
}
std::string_view rawText(DirectionFilter direction) {
    return rawTextOf<DirectionFilter>(directions, direction);
}

std::optional<ChangeAction> changeActionFrom(std::string_view rawText) {
    return caseOf<ChangeAction>(actions, rawText);
}
std::optional<ChangeSource> changeSourceFrom(std::string_view rawText) {
    return caseOf<ChangeSource>(sources, rawText);
}
std::optional<DirectionFilter> directionFilterFrom(std::string_view rawText) {
    return caseOf<DirectionFilter>(directions, rawText);
}

bool passes(DirectionFilter direction, std::int64_t byteDelta) {
    switch (direction) {
        case DirectionFilter::added:
            return byteDelta > 0;
        case DirectionFilter::freed:
            return byteDelta < 0;
        case DirectionFilter::all:
            break;
    }
    return true;
}

std::string displayName(const FileChange& change) {
    if (change.fileCount < 2 && !change.name.empty()) return change.name;
    return filled(translatedCount("{} smaller file", "{} smaller files", change.fileCount),
                  groupedNumber(change.fileCount));
}

void ChangeTotals::add(std::int64_t byteDelta, std::int64_t fileCount) {
    if (byteDelta > 0)
        added = checkedSum(added, byteDelta);
    else
        freed = checkedDifference(freed, byteDelta);
    count = checkedSum(count, fileCount);
}

ChangeTotals& ChangeTotals::operator+=(const ChangeTotals& other) {
    added = checkedSum(added, other.added);
    freed = checkedSum(freed, other.freed);
    count = checkedSum(count, other.count);
    return *this;
}

std::int64_t ChangeTotals::net() const {
    return checkedDifference(added, freed);
}
std::int64_t ChangeTotals::volume() const {
    return checkedSum(added, freed);
}

}  // namespace brindle
