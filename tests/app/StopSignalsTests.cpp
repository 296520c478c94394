#include "app/PrivateBus.h"
#include "app/desktop/StopSignals.h"
#include "support/ChildProcess.h"

#include <csignal>
#include <gtest/gtest.h>

namespace brindle {
namespace {

void signalThisProcess(int number) {
    ::kill(::getpid(), number);
}

TEST(StopSignals, TheFirstIsARequestToTheEventLoopAndTheSecondEndsTheProcess) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const int status = inChildProcess([signal] {
            StopSignals signals;
            signalThisProcess(signal);  // before anybody listens
            ::usleep(20'000);
            int requests = 0;
            QObject::connect(&signals, &StopSignals::quitRequested, [&] { ++requests; });
            if (!eventually([&] { return requests == 1; })) throw std::runtime_error("nothing was requested");
            signalThisProcess(SIGTERM);
            (void)eventually([] { return false; });
        });
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << signal << " " << status;
    }
}

}  // namespace
}  // namespace brindle
