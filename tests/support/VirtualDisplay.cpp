// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/VirtualDisplay.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void startServer(int readyOutput) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const std::string number = std::to_string(dup(readyOutput)); // not closed by execlp()
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-nolisten", "tcp", "-screen", "0",
           "320x240x24", nullptr);
    _exit(127);
}

} // namespace

VirtualDisplay::VirtualDisplay() {
    int ready[2] = {-1, -1};
    if (pipe2(ready, O_CLOEXEC) != 0)
        throw std::runtime_error("cannot open a pipe");
    server_ = fork();
    if (server_ == 0)
        startServer(ready[1]);
    close(ready[1]);
    // The server writes the number of its display and a line end once it accepts clients.
    char digit = '\0';
    while (read(ready[0], &digit, 1) == 1 && digit != '\n')
        name_ += name_.empty() ? std::string(":") + digit : std::string(1, digit);
    close(ready[0]);
}

VirtualDisplay::~VirtualDisplay() {
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}
