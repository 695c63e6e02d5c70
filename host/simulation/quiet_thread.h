// Starts a thread that takes no signals: they belong to the host's own threads, and a server that a signal interrupts
// loses the request it is reading.
#ifndef DRAVO_QUIET_THREAD_H
#define DRAVO_QUIET_THREAD_H

#include <pthread.h>

#include <csignal>
#include <thread>
#include <utility>

namespace simulation {

/// Throws std::system_error when the system has no thread left.
template <class Work>
std::thread startThread(Work work) {
    struct Blocked {
        Blocked() {
            sigset_t all;
            ::sigfillset(&all);
            ::pthread_sigmask(SIG_SETMASK, &all, &before);
        }
        ~Blocked() { ::pthread_sigmask(SIG_SETMASK, &before, nullptr); }
        sigset_t before{};
    };
    const Blocked blocked;  // a thread inherits the mask it is started under
    return std::thread(std::move(work));
}

}  // namespace simulation

#endif
