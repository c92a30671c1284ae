// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>
#include <QVarLengthArray>

#include <linux/limits.h>

/// Extended attributes (xattr(7)) of an item itself, never of a link's target. Any thread.
namespace MWCore {

/// The names of all extended attributes of an item, listed with one call if they take no more than
/// a kilobyte.
class AttributeNames {
public:
    explicit AttributeNames(const QByteArray &path);

    /// Those of the entry @p name of the open folder @p folder. @p path must lead to the same
    /// entry; kernels before 6.13 need it.
    AttributeNames(int folder, const char *name, const QByteArray &path);

    /// noErr; errFSOperationNotSupported if the file system has no extended attributes; else why
    /// they could not be listed.
    [[nodiscard]] OSStatus status() const { return status_; }
    [[nodiscard]] bool contains(const char *name) const;

private:
    template <typename List> void read(List list);

    static constexpr qsizetype kUsualNames = 1024; // bytes

    QVarLengthArray<char, kUsualNames> names_; ///< each ends with a NUL
    OSStatus status_ = noErr;
};

/// noErr if an item's metadata can be searched: its attributes were listed, or its file system has
/// none and the item exists. Otherwise the cause of the failure.
[[nodiscard]] OSStatus statusOfNames(const QByteArray &path, const AttributeNames &names);

/// The kernel's limit for the value of an attribute, in bytes.
constexpr qsizetype kLongestAttribute = XATTR_SIZE_MAX;

/// The value of an attribute. nullopt on failure, with the cause in @p status: resNotFound if there
/// is no such attribute, fileBoundsErr if the value is longer than @p longest bytes.
[[nodiscard]] std::optional<QByteArray> attribute(const QByteArray &path, const char *name,
                                                  OSStatus *status,
                                                  qsizetype longest = kLongestAttribute);

/// The length of an attribute's value in bytes; negative on failure.
[[nodiscard]] int64_t attributeLength(const QByteArray &path, const char *name);

/// Whether an attribute must exist before it is set.
enum class Before { Absent, Present };

/// Sets the value atomically; on failure the old value remains. dupFNErr if the attribute exists
/// but should not, resNotFound if it should exist but does not.
[[nodiscard]] OSStatus setAttribute(const QByteArray &path, const char *name,
                                    const QByteArray &value, Before before);

/// resNotFound if there is no such attribute.
[[nodiscard]] OSStatus removeAttribute(const QByteArray &path, const char *name);

} // namespace MWCore
