// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/ItemIcon.h>

#include <QHash>
#include <QString>

namespace MWCore {

/// The icons of file types, learned from the icons of files: what a file probably looks like before
/// its own icon is known. Bounded. Belongs to one thread.
class TypeIcons {
public:
    /// Learns from @p icon, that of a file whose name has @p extension.
    void learn(const QString &extension, const ItemIcon &icon);

    /// Null if the extension is unknown.
    [[nodiscard]] ItemIcon::Ptr find(const QString &extension) const;

private:
    QHash<QString, ItemIcon::Ptr> icons_;
};

} // namespace MWCore
