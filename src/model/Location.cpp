#include "model/Location.h"

#include "model/RawText.h"

namespace brindle {
namespace {

constexpr RawTextRow<LocationKind> kinds[] = {{LocationKind::folder, "folder"},
                                              {LocationKind::volume, "volume"}};

constexpr RawTextRow<LocationStatus> statuses[] = {{LocationStatus::active, "active"},
                                                   {LocationStatus::checking, "checking"},
                                                   {LocationStatus::paused, "paused"},
                                                   {LocationStatus::needsAccess, "needsAccess"},
                                                   {LocationStatus::disconnected, "disconnected"}};

}  // namespace

std::string_view rawText(LocationKind kind) {
    return rawTextOf<LocationKind>(kinds, kind);
}
std::string_view rawText(LocationStatus status) {
    return rawTextOf<LocationStatus>(statuses, status);
}

LocationKind locationKindFrom(std::string_view rawText) {
    return caseOf<LocationKind>(kinds, rawText).value_or(LocationKind::folder);
}
LocationStatus locationStatusFrom(std::string_view rawText) {
    return caseOf<LocationStatus>(statuses, rawText).value_or(LocationStatus::active);
}

}  // namespace brindle
