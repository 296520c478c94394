#include "app/AppModes.h"

#include "model/RawText.h"

namespace brindle {
namespace {

constexpr RawTextRow<Destination> destinations[] = {{Destination::overview, "overview"},
                                                    {Destination::activity, "activity"},
                                                    {Destination::history, "history"},
                                                    {Destination::trends, "trends"},
                                                    {Destination::locations, "locations"}};

}  // namespace

std::string_view rawText(Destination destination) {
    return rawTextOf<Destination>(destinations, destination);
}

std::optional<Destination> destinationFrom(std::string_view rawText) {
    return caseOf<Destination>(destinations, rawText);
}

}  // namespace brindle
