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

/// A remembered item: plain bytes that lead to it after it was renamed or moved on its volume. The
/// record never changes. Reference-counted; any thread.
class MWCORE_EXPORT MXAlias : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXAlias>;

    // Each makes an alias; null on failure. The class constructors and the initialisers are the
    // same.

    /// For the item at @p path; null when nothing is there, also behind a link.
    [[nodiscard]] static Ptr initWithPath(const QString &path);
    [[nodiscard]] static Ptr aliasWithPath(const QString &path) { return initWithPath(path); }

    /// For a record that data() gave; null for null. Other bytes are accepted and lead nowhere.
    [[nodiscard]] static Ptr initWithData(const QByteArray &data);
    [[nodiscard]] static Ptr aliasWithData(const QByteArray &data) { return initWithData(data); }

    /// The record, to be kept between runs.
    [[nodiscard]] QByteArray data() const { return alias_; }

    /// Where the item is now; null when it is gone, cannot be found, or has a path of more than
    /// 1,024 bytes. An item that was moved far away is searched for, which may take seconds;
    /// it stops soon after @p cancelled, which may be null, becomes true.
    [[nodiscard]] QString path(const std::atomic<bool> *cancelled = nullptr) const;

    /// A reference to the item at @p path; nothing when there is none.
    [[nodiscard]] static std::optional<FSRef> _fsRefForPath(const QString &path);

private:
    explicit MXAlias(QByteArray alias) : alias_(std::move(alias)) {}

    QByteArray alias_;
};

} // namespace MWCore
