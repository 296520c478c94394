// A session manager that is told by signals what the user does: SIGUSR1 logs out, SIGUSR2 thinks better of
// it, SIGHUP ends the session for good. It prints the address that programs of the session are given, and
// then a line for what they do: "registered", "saved", "left".

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <span>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

struct Session {
    std::vector<SmsConn> programs;
    std::vector<IceConn> gone;
};

void tell(const char* event) {
    std::puts(event);
    std::fflush(stdout);
}

void askToSave(SmsConn program, bool isLogout) {
    SmsSaveYourself(program, isLogout ? SmSaveBoth : SmSaveLocal, isLogout ? True : False,
                    isLogout ? SmInteractStyleAny : SmInteractStyleNone, False);
}

Status registered(SmsConn program, SmPointer, char* formerId) {
    SmsRegisterClientReply(program, SmsGenerateClientID(program));
    tell("registered");
    // The protocol has a program save itself when it comes for the first time.
    if (formerId == nullptr) askToSave(program, false);
    std::free(formerId);
    return 1;
}

void saved(SmsConn program, SmPointer, Bool) {
    SmsSaveComplete(program);
    tell("saved");
}

void left(SmsConn program, SmPointer data, int count, char** reasons) {
    auto& session = *static_cast<Session*>(data);
    SmFreeReasons(count, reasons);
    std::erase(session.programs, program);
    session.gone.push_back(SmsGetIceConnection(program));
    SmsCleanUp(program);
    tell("left");
}

Status joins(SmsConn program, SmPointer data, unsigned long* mask, SmsCallbacks* callbacks, char**) {
    static_cast<Session*>(data)->programs.push_back(program);
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    callbacks->register_client = {registered, data};
    callbacks->interact_request = {[](SmsConn one, SmPointer, int) { SmsInteract(one); }, data};
    callbacks->interact_done = {[](SmsConn, SmPointer, Bool) {}, data};
    callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, data};
    callbacks->save_yourself_phase2_request = {[](SmsConn one, SmPointer) { SmsSaveYourselfPhase2(one); },
                                               data};
    callbacks->save_yourself_done = {saved, data};
    callbacks->close_connection = {left, data};
    callbacks->set_properties = {
        [](SmsConn, SmPointer, int count, SmProp** properties) {
            for (SmProp* property : std::span(properties, static_cast<std::size_t>(count)))
                SmFreeProperty(property);
            std::free(properties);
        },
        data};
    callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, data};
    callbacks->get_properties = {[](SmsConn one, SmPointer) { SmsReturnProperties(one, 0, nullptr); }, data};
    return 1;
}

}  // namespace

int main() {
    sigset_t commands;
    sigemptyset(&commands);
    for (const int number : {SIGUSR1, SIGUSR2, SIGHUP}) sigaddset(&commands, number);
    sigprocmask(SIG_BLOCK, &commands, nullptr);
    const int told = signalfd(-1, &commands, SFD_CLOEXEC);

    Session session;
    char error[256] = {};
    char vendor[] = "Test";
    char release[] = "1";
    int listeners = 0;
    IceListenObj* listening = nullptr;
    const auto everybody = [](char*) -> Bool { return True; };
    if (SmsInitialize(vendor, release, joins, &session, everybody, sizeof error, error) == 0 ||
        IceListenForConnections(&listeners, &listening, sizeof error, error) == 0) {
        std::fprintf(stderr, "%s\n", error);
        return 1;
    }
    const std::span doors(listening, static_cast<std::size_t>(listeners));
    for (IceListenObj door : doors) IceSetHostBasedAuthProc(door, everybody);
    char* address = IceComposeNetworkIdList(listeners, listening);
    tell(address);

    std::vector<IceConn> connections;
    for (;;) {
        std::vector<pollfd> watched{{.fd = told, .events = POLLIN, .revents = 0}};
        for (IceListenObj door : doors)
            watched.push_back({.fd = IceGetListenConnectionNumber(door), .events = POLLIN, .revents = 0});
        for (IceConn connection : connections)
            watched.push_back({.fd = IceConnectionNumber(connection), .events = POLLIN, .revents = 0});
        if (poll(watched.data(), watched.size(), -1) < 0) return 1;

        std::size_t place = 0;
        if (watched[place++].revents != 0) {
            signalfd_siginfo command{};
            if (read(told, &command, sizeof command) != sizeof command) return 1;
            for (SmsConn program : session.programs) {
                if (command.ssi_signo == SIGUSR1) askToSave(program, true);
                if (command.ssi_signo == SIGUSR2) SmsShutdownCancelled(program);
                if (command.ssi_signo == SIGHUP) SmsDie(program);
            }
        }
        const std::vector<IceConn> before = connections;
        for (IceListenObj door : doors) {
            if (watched[place++].revents == 0) continue;
            IceAcceptStatus status = IceAcceptFailure;
            if (IceConn connection = IceAcceptConnection(door, &status)) connections.push_back(connection);
        }
        for (IceConn connection : before)
            if (watched[place++].revents != 0 &&
                IceProcessMessages(connection, nullptr, nullptr) == IceProcessMessagesIOError)
                session.gone.push_back(connection);
        for (IceConn connection : std::exchange(session.gone, {})) {
            if (std::erase(connections, connection) == 0) continue;
            IceSetShutdownNegotiation(connection, False);
            IceCloseConnection(connection);
        }
    }
}
