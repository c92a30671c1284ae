// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/Process.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void dropRoot() {
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0))
        std::abort();
}

/// A new descriptor that reads @p text.
int openText(const std::string &text) {
    const int descriptor = memfd_create("input", 0);
    if (write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("cannot write the input");
    lseek(descriptor, 0, SEEK_SET);
    return descriptor;
}

[[noreturn]] void execute(std::vector<std::string> &command, const ProcessOptions &options) {
    for (const std::string &variable : options.environment)
        putenv(const_cast<char *>(variable.c_str()));
    if (!options.workingFolder.empty() && chdir(options.workingFolder.c_str()) != 0)
        _exit(126);
    if (options.asNobody)
        dropRoot();
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

int statusOf(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// Reads both descriptors to their ends and closes them; a terminal ends with an error.
void readBoth(std::array<pollfd, 2> sources, std::array<std::string *, 2> texts) {
    while (sources[0].fd >= 0 || sources[1].fd >= 0) {
        poll(sources.data(), sources.size(), -1);
        for (std::size_t index = 0; index < sources.size(); ++index) {
            if (sources[index].fd < 0 || sources[index].revents == 0)
                continue;
            char buffer[65536];
            const ssize_t length = read(sources[index].fd, buffer, sizeof buffer);
            if (length > 0) {
                texts[index]->append(buffer, static_cast<std::size_t>(length));
                continue;
            }
            close(sources[index].fd);
            sources[index].fd = -1;
        }
    }
}

} // namespace

ProcessResult runProcess(std::vector<std::string> command, const ProcessOptions &options) {
    const bool onTerminal = options.outputTo == OutputTo::Terminal;
    int output[2] = {-1, -1};
    int errorOutput[2] = {-1, -1};
    const int opened = onTerminal ? openpty(&output[0], &output[1], nullptr, nullptr, nullptr)
                                  : pipe2(output, O_CLOEXEC);
    if (opened != 0 || (!onTerminal && pipe2(errorOutput, O_CLOEXEC) != 0))
        throw std::runtime_error("cannot open a pipe");

    const int input = openText(options.input);
    const pid_t process = fork();
    if (process == 0) {
        dup2(input, STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        dup2(onTerminal ? output[1] : errorOutput[1], STDERR_FILENO);
        execute(command, options);
    }
    close(input);
    close(output[1]);
    if (!onTerminal)
        close(errorOutput[1]);
    ProcessResult result;
    readBoth({{{output[0], POLLIN, 0}, {errorOutput[0], POLLIN, 0}}},
             {&result.output, &result.errorOutput});
    result.status = statusOf(process);
    return result;
}

int runForked(const std::function<int()> &work) {
    const pid_t process = fork();
    if (process == 0) {
        // _exit() runs no cleanup: that is the parent's.
        try {
            _exit(work());
        } catch (const std::exception &failure) {
            std::fprintf(stderr, "in the forked process: %s\n", failure.what());
            _exit(99);
        }
    }
    return statusOf(process);
}

int runAsNobody(const std::function<int()> &work) {
    return runForked([&work] {
        dropRoot();
        return work();
    });
}
