// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/SessionBus.h"

#include "tests/support/Process.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void startBus(int addressOutput) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const std::string option = "--print-address=" + std::to_string(dup(addressOutput));
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", option.c_str(), nullptr);
    _exit(127);
}

} // namespace

SessionBus::SessionBus() {
    int address[2] = {-1, -1};
    if (pipe2(address, O_CLOEXEC) != 0)
        throw std::runtime_error("cannot open a pipe");
    process_ = fork();
    if (process_ == 0)
        startBus(address[1]);
    close(address[1]);
    for (char letter = '\0'; read(address[0], &letter, 1) == 1 && letter != '\n';)
        address_ += letter;
    close(address[0]);
}

SessionBus::~SessionBus() {
    kill(process_, SIGCONT);
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

pid_t SessionBus::processOf(const std::string &name) {
    const std::string bus = "org.freedesktop.DBus";
    const ProcessResult answer =
        runProcess({"gdbus", "call", "--session", "-d", bus, "-o", "/org/freedesktop/DBus", "-m",
                    bus + ".GetConnectionUnixProcessID", name});
    const std::string before = "(uint32 ";
    return answer.output.starts_with(before) ? std::atoi(answer.output.c_str() + before.size())
                                             : -1;
}
