// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>
#include <QVarLengthArray>

/// Extended attributes of an item itself, never of what a link leads to (xattr(7)). Any thread.
namespace MWCore {

/// The names of all extended attributes of an item, found with one call where they take less than
/// a kilobyte.
class AttributeNames {
public:
    explicit AttributeNames(const QByteArray &path);

    /// Of the entry @p name of the open folder @p folder, which @p path leads to as well: kernels
    /// before 6.13 know no other way.
    AttributeNames(int folder, const char *name, const QByteArray &path);

    /// noErr; errFSOperationNotSupported where the file system has none; else why they could not
    /// be listed.
    [[nodiscard]] OSStatus status() const { return status_; }
    [[nodiscard]] bool contains(const char *name) const;

private:
    template <typename List> void read(List list);

    QVarLengthArray<char, 1024> names_; ///< one after the other, each with a NUL
    OSStatus status_ = noErr;
};

/// noErr where metadata of an item can be looked for: its attributes were listed, or its file
/// system has none and the item is there. Else why not.
[[nodiscard]] OSStatus statusOfNames(const QByteArray &path, const AttributeNames &names);

/// What the kernel keeps of an attribute at most, in bytes.
constexpr qsizetype kLongestAttribute = 65536;

/// Nothing on failure, with the cause in @p status: resNotFound when there is none of the name,
/// fileBoundsErr for one of more than @p longest bytes.
[[nodiscard]] std::optional<QByteArray> attribute(const QByteArray &path, const char *name,
                                                  OSStatus *status,
                                                  qsizetype longest = kLongestAttribute);

/// The length of an attribute in bytes; negative when there is none.
[[nodiscard]] int64_t attributeLength(const QByteArray &path, const char *name);

/// What an attribute must be like before it is set.
enum class Before { Absent, Present };

/// Sets the whole value at once; the old one stays on failure: dupFNErr when there is one and none
/// is expected, resNotFound when there is none.
[[nodiscard]] OSStatus setAttribute(const QByteArray &path, const char *name,
                                    const QByteArray &value, Before before);

/// resNotFound when there is none of the name.
[[nodiscard]] OSStatus removeAttribute(const QByteArray &path, const char *name);

} // namespace MWCore
