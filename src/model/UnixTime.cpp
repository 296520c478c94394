#include "model/UnixTime.h"

#include <chrono>

namespace brindle {

UnixTime systemNow() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

}  // namespace brindle
