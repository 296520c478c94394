#include "support/Unprivileged.h"

#include "support/ChildProcess.h"

#include <grp.h>
#include <stdexcept>
#include <unistd.h>

namespace brindle {

bool holdsUnprivileged(const std::function<bool()>& check) {
    constexpr unsigned nobody = 65534;
    return inChildProcess([&] {
               if (::geteuid() == 0 &&
                   (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
                    ::setresuid(nobody, nobody, nobody) != 0))
                   throw std::runtime_error("the rights of root could not be given up");
               if (!check()) throw std::runtime_error("the check does not hold");
           }) == 0;
}

}  // namespace brindle
