#include "mainwindow/signal_closer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QWidget>
#include <csignal>

namespace lumidot {
namespace {

// A signal handler may do next to nothing: it writes one byte into a socket pair, and the
// event loop, woken by the other end, closes the window outside the handler.
int signalPipe[2] = {-1, -1};

void WakeEventLoop(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, 1);
}

}  // namespace

SignalCloser::SignalCloser(QWidget* window) : window_(window) {
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) return;
    notifier_ = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &SignalCloser::onSignal);

    struct sigaction action {};
    action.sa_handler = WakeEventLoop;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

SignalCloser::~SignalCloser() {
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) std::signal(signal, SIG_DFL);
}

void SignalCloser::onSignal() {
    char byte;
    [[maybe_unused]] const ssize_t read = ::read(signalPipe[1], &byte, 1);
    window_->close();
}

}  // namespace lumidot
