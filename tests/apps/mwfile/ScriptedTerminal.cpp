// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ScriptedTerminal.h"

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utmp.h>

namespace {

[[noreturn]] void execute(int line, std::vector<std::string> &command, const char *type) {
    login_tty(line);
    setenv("TERM", type, 1);
    unsetenv("STY");
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

ScriptedTerminal::ScriptedTerminal() {
    const winsize size = {24, 80, 800, 480};
    if (openpty(&terminal_, &line_, nullptr, nullptr, &size) != 0)
        throw std::runtime_error("cannot open a terminal");
    fcntl(terminal_, F_SETFD, FD_CLOEXEC);
    tcgetattr(line_, &before_);
}

ScriptedTerminal::~ScriptedTerminal() {
    hangUp();
    close(line_);
}

int ScriptedTerminal::run(std::vector<std::string> command, const std::vector<Row> &script,
                          const char *type) {
    process_ = fork();
    if (process_ == 0)
        execute(line_, command, type);
    processDescriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
    std::size_t seen = 0;
    for (const Row &row : script) {
        std::size_t found = 0;
        while ((found = output_.find(row.output, seen)) == std::string::npos && readMore())
            ;
        if (found == std::string::npos)
            break; // the command has ended
        seen = found + row.output.size();
        row.reply(*this);
    }
    while (readMore())
        ;
    int status = 0;
    waitpid(process_, &status, 0);
    close(processDescriptor_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void ScriptedTerminal::type(const std::string &text) const {
    if (write(terminal_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("cannot write to the terminal");
}

void ScriptedTerminal::hangUp() {
    if (terminal_ >= 0)
        close(terminal_);
    terminal_ = -1;
}

bool ScriptedTerminal::isRestored() const {
    termios now = {};
    tcgetattr(line_, &now);
    return now.c_lflag == before_.c_lflag && std::memcmp(now.c_cc, before_.c_cc, NCCS) == 0;
}

std::string ScriptedTerminal::unread() const {
    termios mode = before_;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 0;
    tcsetattr(line_, TCSANOW, &mode);
    char buffer[1024];
    const ssize_t length = read(line_, buffer, sizeof buffer);
    return {buffer, length > 0 ? static_cast<std::size_t>(length) : 0};
}

/// False once the command has ended and nothing more comes.
bool ScriptedTerminal::readMore() {
    pollfd sources[] = {{terminal_, POLLIN, 0}, {processDescriptor_, POLLIN, 0}};
    poll(sources, std::size(sources), -1);
    if (sources[0].revents == 0)
        return false;
    char buffer[65536];
    const ssize_t length = read(terminal_, buffer, sizeof buffer);
    output_.append(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
    return length > 0;
}
