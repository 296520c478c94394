#pragma once

#include <QQuickItem>
#include <string>

namespace brindle {

/// What counts of a text that lies beyond the edge of the item looked at.
enum class BeyondTheEdge { isCut, scrollsIntoView };

/// The texts in `item` that do not show whole, a line each: shortened, larger than their place, or beyond its
/// edges. Empty as soon as all do; until then layouts and what is loaded beside them are waited for, 5 s
/// long.
std::string cutTexts(QQuickItem& item, BeyondTheEdge beyond = BeyondTheEdge::isCut);

}  // namespace brindle
