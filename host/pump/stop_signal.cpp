#include "host/pump/stop_signal.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t stopFlag = 0;
int wakePipe[2] = {-1, -1};  // the handler writes to it, so that a signal just before a wait ends that wait too

void onStop(int) {
    stopFlag = 1;
    const char byte = 0;
    if (write(wakePipe[1], &byte, 1) < 0) {
        return;  // full: the wait is awake already
    }
}

}  // namespace

void watchStopSignals() {
    if (wakePipe[0] >= 0) {
        return;
    }
    if (pipe2(wakePipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        wakePipe[0] = wakePipe[1] = -1;  // waits are short slices; without the pipe one slice may pass first
    }
    struct sigaction action {};
    action.sa_handler = onStop;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
}

void ignoreFileSignals() {
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    sigemptyset(&action.sa_mask);
    sigaction(SIGPIPE, &action, nullptr);
    sigaction(SIGXFSZ, &action, nullptr);  // a file as long as it may get
}

bool stopRequested() {
    return stopFlag != 0;
}

void sleepUnlessStopped(int milliseconds) {
    pollfd wake{wakePipe[0], POLLIN, 0};
    poll(&wake, 1, milliseconds);
}
