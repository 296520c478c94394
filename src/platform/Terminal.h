#pragma once

namespace brindle {

enum class StandardStream { input = 0, output = 1, error = 2 };

/// Whether a person reads the stream as it is written, or types what is read from it.
[[nodiscard]] bool isTerminal(StandardStream stream);

/// Columns of the terminal; 80 where it does not say.
[[nodiscard]] int terminalWidth(StandardStream stream);

/// Whether to colour what goes to the stream: on a terminal that can, unless NO_COLOR is set to anything but
/// the empty text (no-color.org).
[[nodiscard]] bool wantsColour(StandardStream stream);

/// Whether the locale that the process set writes its texts as UTF-8.
[[nodiscard]] bool writesUTF8();

}  // namespace brindle
