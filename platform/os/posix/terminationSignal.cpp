#include "platform/os/posix/terminationSignal.h"

#include "platform/os/posix/threadRecord.h"

#include <atomic>
#include <csignal>

namespace zk::os {
namespace {

// Runs on the thread that is to end.
void endOnSignal(int, siginfo_t* info, void*) noexcept
{
    ThreadRecord* const record = ownThreadRecord;
    if (info->si_code != SI_QUEUE || !record || !record->state || info->si_value.sival_ptr != record->state)
        return;
    if (record->shields > 0)
        record->endIsDue = 1;
    else
        leaveThread();
}

constinit std::atomic<int> takenSignal{0};

// When the module is unloaded, its handler goes with it.
[[gnu::destructor(moduleEndSignal)]] void giveBackSignal() noexcept
{
    int const number = takenSignal.load();
    struct sigaction action;
    if (number == 0 || !isOnlyUserOfRecords() || sigaction(number, nullptr, &action) != 0 ||
        !(action.sa_flags & SA_SIGINFO) || action.sa_sigaction != endOnSignal)
        return;
    action = {};
    action.sa_handler = SIG_DFL;
    sigaction(number, &action, nullptr);
}

// The real-time signal kept for TerminateThread(): the highest one that nobody
// handles; 0 if all are in use.
int takeSignal() noexcept
{
    for (int number = SIGRTMAX; number >= SIGRTMIN; --number) {
        struct sigaction action;
        if (sigaction(number, nullptr, &action) != 0 || (action.sa_flags & SA_SIGINFO) ||
            action.sa_handler != SIG_DFL)
            continue;
        action = {};
        action.sa_flags = SA_SIGINFO | SA_RESTART;
        action.sa_sigaction = endOnSignal;
        if (sigaction(number, &action, nullptr) == 0) {
            takenSignal = number;
            return number;
        }
    }
    return 0;
}

}  // namespace

int terminationSignal() noexcept
{
    static int const number = takeSignal();
    return number;
}

void unblockTerminationSignal() noexcept
{
    int const number = terminationSignal();
    if (number == 0)
        return;
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, number);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace zk::os
