#include "platform/Terminal.h"

#include "platform/Paths.h"

#include <langinfo.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace brindle {

bool isTerminal(StandardStream stream) {
    return isatty(static_cast<int>(stream)) == 1;
}

int terminalWidth(StandardStream stream) {
    constexpr int usual = 80;
    winsize size{};
    const bool isKnown = ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usual;
}

bool wantsColour(StandardStream stream) {
    return isTerminal(stream) && environmentValue("NO_COLOR").value_or("").empty() &&
           environmentValue("TERM").value_or("dumb") != "dumb";
}

bool writesUTF8() {
    return std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

}  // namespace brindle
