#pragma once

namespace brindle {

/// Makes the QML modules of ui/ known to the engines of this program. To be called before the first is made.
void registerQmlModules();

}  // namespace brindle
