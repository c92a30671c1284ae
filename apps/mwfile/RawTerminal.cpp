// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "RawTerminal.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// What a signal handler needs to restore the terminal.
int openDescriptor = -1;
termios modeBefore = {};

/// The signal's default action follows when this returns: SA_RESETHAND has restored it.
void restoreAndRaise(int signal) {
    const int error = errno;
    tcsetattr(openDescriptor, TCSAFLUSH, &modeBefore);
    std::raise(signal);
    errno = error;
}

} // namespace

RawTerminal::RawTerminal() : descriptor_(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (descriptor_ < 0 || tcgetattr(descriptor_, &modeBefore) != 0)
        return;
    openDescriptor = descriptor_;
    handleSignals();
    isOpen_ = makeRaw();
}

RawTerminal::~RawTerminal() {
    if (isOpen_)
        tcsetattr(descriptor_, restoring_, &modeBefore);
    if (openDescriptor >= 0)
        for (std::size_t index = 0; index < kSignals.size(); ++index)
            sigaction(kSignals[index], &actionsBefore_[index], nullptr);
    openDescriptor = -1;
    if (descriptor_ >= 0)
        close(descriptor_);
}

/// The keys that interrupt and quit keep working.
bool RawTerminal::makeRaw() const {
    termios mode = modeBefore;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 0;
    mode.c_cc[VTIME] = 0;
    mode.c_cc[VSUSP] = _POSIX_VDISABLE;
    return tcsetattr(descriptor_, TCSANOW, &mode) == 0;
}

/// A signal that the parent process ignores stays ignored.
void RawTerminal::handleSignals() {
    struct sigaction action = {};
    action.sa_handler = restoreAndRaise;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        sigaction(kSignals[index], nullptr, &actionsBefore_[index]);
        if (actionsBefore_[index].sa_handler != SIG_IGN)
            sigaction(kSignals[index], &action, nullptr);
    }
}

} // namespace MWCore::mwfile
