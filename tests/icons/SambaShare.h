// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <optional>
#include <string>

#include <QByteArray>

/// A folder that Samba shares as it does with Macs (vfs_fruit), for a single test. The server has
/// its own configuration and state, and serves one client at a time on a port of its own.
class SambaShare {
public:
    /// @p options are lines of smb.conf(5).
    explicit SambaShare(const std::string &options);

    /// Why nothing can be shared (Samba may be missing); empty if the folder is shared.
    [[nodiscard]] const std::string &failureReason() const { return obstacle_; }

    /// The path of an item on the server.
    [[nodiscard]] std::string at(const std::string &name) const { return folder_.at("s/" + name); }

    // What a client reads and writes. A stream of an item is named "item:stream".
    [[nodiscard]] std::optional<QByteArray> read(const std::string &name) const;
    void write(const std::string &name, const QByteArray &content) const;

private:
    ProcessResult runClient(const std::string &commands) const;

    TemporaryFolder folder_;
    std::string obstacle_;
};
