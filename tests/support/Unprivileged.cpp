#include "support/Unprivileged.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>

namespace brindle {
namespace {

constexpr unsigned nobody = 65534;

bool giveUpRoot() {
    return ::geteuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
                                ::setresuid(nobody, nobody, nobody) == 0);
}

}  // namespace

bool holdsUnprivileged(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) {
        bool holds = false;
        try {
            holds = giveUpRoot() && check();
        } catch (const std::exception&) {
            holds = false;
        }
        ::_exit(holds ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}

}  // namespace brindle
