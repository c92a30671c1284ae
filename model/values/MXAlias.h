// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/mwcore_export.h>

#include <atomic>
#include <optional>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

namespace MWCore {

/// An alias record: bytes by which an item is found after it was renamed or moved on its volume.
/// The record never changes. Reference-counted; any thread.
class MWCORE_EXPORT MXAlias : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXAlias>;

    // init... and alias... are the same. Each returns null on failure.

    /// An alias to the item at @p path. Null if the item, or the target of a link, does not exist.
    [[nodiscard]] static Ptr initWithPath(const QString &path);
    [[nodiscard]] static Ptr aliasWithPath(const QString &path) { return initWithPath(path); }

    /// An alias from a record of data(); null for null. Other bytes are accepted, but path() is
    /// then null.
    [[nodiscard]] static Ptr initWithData(const QByteArray &data);
    [[nodiscard]] static Ptr aliasWithData(const QByteArray &data) { return initWithData(data); }

    /// The record, which programs may store.
    [[nodiscard]] QByteArray data() const { return alias_; }

    /// The item's current path. Null if the item is gone or not found, or the path has more than
    /// 1,024 bytes. Searching for a moved item may take seconds; it stops soon after @p cancelled,
    /// which may be null, becomes true.
    [[nodiscard]] QString path(const std::atomic<bool> *cancelled = nullptr) const;

    /// A reference to the item at @p path; nullopt if it does not exist.
    [[nodiscard]] static std::optional<FSRef> _fsRefForPath(const QString &path);

private:
    explicit MXAlias(QByteArray alias) : alias_(std::move(alias)) {}

    QByteArray alias_;
};

} // namespace MWCore
