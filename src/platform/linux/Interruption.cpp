#include "platform/Interruption.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <system_error>

namespace brindle {
namespace {

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
    return signals;
}

void hearStopSignals() {
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace

Interruption::Interruption(std::function<void()> onFirst) : onFirst_(std::move(onFirst)) {
    const sigset_t signals = stopSignals();
    signals_ = FileDescriptor(signalfd(-1, &signals, SFD_CLOEXEC));
    end_ = FileDescriptor(eventfd(0, EFD_CLOEXEC));
    if (!signals_ || !end_) throw std::system_error(errno, std::generic_category());
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    thread_ = std::thread([this] { listen(); });
}

Interruption::~Interruption() {
    eventfd_write(end_.get(), 1);
    thread_.join();
    hearStopSignals();
}

void Interruption::listen() {
    for (bool isFirst = true;; isFirst = false) {
        std::array<pollfd, 2> waiting{{{signals_.get(), POLLIN, 0}, {end_.get(), POLLIN, 0}}};
        while (poll(waiting.data(), waiting.size(), -1) < 0 && errno == EINTR) {
        }
        if (waiting[1].revents != 0) return;
        signalfd_siginfo received{};
        if (read(signals_.get(), &received, sizeof received) != sizeof received) return;
        if (isFirst) {
            onFirst_();
            continue;
        }
        const int signal = static_cast<int>(received.ssi_signo);
        std::signal(signal, SIG_DFL);
        hearStopSignals();
        raise(signal);
    }
}

void becomeIndependent() {
    hearStopSignals();
    setsid();
}

}  // namespace brindle
