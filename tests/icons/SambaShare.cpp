// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/icons/SambaShare.h"

#include "tests/platform/metadata/attributes.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char *kGlobalOptions = R"(
server role = standalone server
map to guest = Bad User
guest account = root
load printers = no
disable spoolss = yes
vfs objects = catia fruit streams_xattr
)";

/// A socket that listens on a free port, which is stored in @p port.
int listenOnFreePort(uint16_t *port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *const any = reinterpret_cast<sockaddr *>(&address);
    if (bind(listener, any, length) == 0 && listen(listener, 1) == 0)
        getsockname(listener, any, &length);
    *port = ntohs(address.sin_port);
    return listener;
}

/// Becomes the server of the first client, as if started by inetd. It is in a session of its own,
/// because it ends all processes of its group when it exits.
[[noreturn]] void serve(int listener, const std::string &folder) {
    setsid();
    const int log = open((folder + "/output").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    dup2(accept(listener, nullptr, nullptr), STDIN_FILENO);
    execlp("smbd", "smbd", "-s", (folder + "/smb.conf").c_str(), nullptr);
    _exit(127);
}

} // namespace

SambaShare::SambaShare(const std::string &options) {
    const std::string state = folder_.folder("state");
    std::string text = "[global]\nlog file = " + state + "/log\n";
    for (const char *what : {"private dir", "lock directory", "state directory", "cache directory",
                             "pid directory", "ncalrpc dir"})
        text += std::string(what) + " = " + state + "\n";
    text += kGlobalOptions;
    text += "[share]\nread only = no\nguest ok = yes\npath = " + folder_.folder("s") + "\n";
    folder_.write("smb.conf", text + options);
    const ProcessResult result = runClient("ls");
    if (result.status != 0)
        obstacle_ = "Samba does not work: " + result.output + result.errorOutput;
}

std::optional<QByteArray> SambaShare::read(const std::string &name) const {
    const std::string copy = folder_.at("copy");
    std::filesystem::remove(copy);
    runClient("get \"" + name + "\" " + copy);
    return raw::content(copy);
}

void SambaShare::write(const std::string &name, const QByteArray &content) const {
    raw::write(folder_.at("copy"), content);
    runClient("put " + folder_.at("copy") + " \"" + name + "\"");
}

ProcessResult SambaShare::runClient(const std::string &commands) const {
    uint16_t port = 0;
    const int listener = listenOnFreePort(&port);
    const pid_t server = fork();
    if (server == 0)
        serve(listener, folder_.path());
    const ProcessResult result =
        runProcess({"smbclient", "-s", folder_.at("smb.conf"), "-p", std::to_string(port), "-U",
                    "guest%", "//127.0.0.1/share", "-c", commands});
    close(listener);
    kill(server, SIGTERM);
    waitpid(server, nullptr, 0);
    return result;
}
