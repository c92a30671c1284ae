// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mfs_permissions.h>
#include <MWCore/mwcore_export.h>

#include <cstdint>

#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>
#include <QVariant>

namespace MWCore {

/// An item's access permissions: nine flags, and the sticky, set-user-id and set-group-id bits,
/// which numbers and texts do not include. Reference-counted; one thread at a time.
class MWCORE_EXPORT MXPermission : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXPermission>;

    /// From a permission number: 755 is rwxr-xr-x. A single digit is the owner's
    /// (mfs_permissions.h).
    [[nodiscard]] static Ptr initWithNumber(int32_t number);

    /// From the permission, sticky, set-user-id and set-group-id bits of a mode (inode(7)).
    [[nodiscard]] static Ptr initWithMode(uint32_t mode);

    /// From the ten characters of a long listing, "-rwxr-xr-x". A shorter text gives the number -1,
    /// which sets only others-execute.
    [[nodiscard]] static Ptr initWithString(const QString &text);

    /// An independent object with the same number and bits. It is made from intValue(), whose
    /// single digit is the owner's: flags of others alone become the owner's.
    [[nodiscard]] Ptr copy() const;

    void toggleUserRead() { toggle(0); }
    void toggleUserWrite() { toggle(1); }
    void toggleUserExecute() { toggle(2); }
    void toggleGroupRead() { toggle(3); }
    void toggleGroupWrite() { toggle(4); }
    void toggleGroupExecute() { toggle(5); }
    void toggleWorldRead() { toggle(6); }
    void toggleWorldWrite() { toggle(7); }
    void toggleWorldExecute() { toggle(8); }
    void toggleStickyBit() { stickyBit_ = !stickyBit_; }
    void toggleSuidBit() { suidBit_ = !suidBit_; }
    void toggleSgidBit() { sgidBit_ = !sgidBit_; }

    [[nodiscard]] bool userCanRead() const { return has(0); }
    [[nodiscard]] bool userCanWrite() const { return has(1); }
    [[nodiscard]] bool userCanExecute() const { return has(2); }
    [[nodiscard]] bool groupCanRead() const { return has(3); }
    [[nodiscard]] bool groupCanWrite() const { return has(4); }
    [[nodiscard]] bool groupCanExecute() const { return has(5); }
    [[nodiscard]] bool worldCanRead() const { return has(6); }
    [[nodiscard]] bool worldCanWrite() const { return has(7); }
    [[nodiscard]] bool worldCanExecute() const { return has(8); }
    [[nodiscard]] bool hasStickyBit() const { return stickyBit_; }
    [[nodiscard]] bool hasSuidBit() const { return suidBit_; }
    [[nodiscard]] bool hasSgidBit() const { return sgidBit_; }

    /// The permission number.
    [[nodiscard]] int32_t intValue() const { return mfs_permissions_perms_to_octal(&perms_); }
    [[nodiscard]] QVariant numberValue() const { return intValue(); }

    /// The permission number as nine characters, "rwxr-xr-x"; fewer if it has fewer digits: "rwx"
    /// for 7.
    [[nodiscard]] QString stringValue() const { return octalToString(intValue()); }

    [[nodiscard]] static QString octalToString(int32_t number);

    /// -1 for a text of nine characters or fewer.
    [[nodiscard]] static int32_t stringToOctal(const QString &text);

private:
    explicit MXPermission(int32_t number);

    void toggle(int32_t index) { mfs_toggle_permission(index, &perms_); }
    [[nodiscard]] bool has(int32_t index) const {
        return mfs_check_for_permission(index, &perms_) != 0;
    }

    mfs_perms perms_{};
    bool stickyBit_ = false;
    bool suidBit_ = false;
    bool sgidBit_ = false;
};

} // namespace MWCore
