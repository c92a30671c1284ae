// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXPermission.h"

#include "core/posix/allocation.h"

namespace MWCore {

MXPermission::MXPermission(int32_t number) {
    const std::unique_ptr<mfs_perms, Free> flags(mfs_permissions_octal_to_perms(number));
    if (flags)
        perms_ = *flags;
}

MXPermission::Ptr MXPermission::initWithNumber(int32_t number) {
    return Ptr(new MXPermission(number));
}

MXPermission::Ptr MXPermission::initWithMode(uint32_t mode) {
    unsigned char sticky = 0;
    unsigned char setGroup = 0;
    unsigned char setUser = 0;
    Ptr permission = initWithNumber(modetToPerms(mode, &sticky, &setGroup, &setUser));
    permission->stickyBit_ = sticky != 0;
    permission->sgidBit_ = setGroup != 0;
    permission->suidBit_ = setUser != 0;
    return permission;
}

MXPermission::Ptr MXPermission::initWithString(const QString &text) {
    return initWithNumber(stringToOctal(text));
}

MXPermission::Ptr MXPermission::copy() const {
    Ptr result = initWithNumber(intValue());
    result->stickyBit_ = stickyBit_;
    result->suidBit_ = suidBit_;
    result->sgidBit_ = sgidBit_;
    return result;
}

QString MXPermission::octalToString(int32_t number) {
    const Text text(mfs_permissions_octal_to_string(number));
    return QString::fromLatin1(text.get());
}

int32_t MXPermission::stringToOctal(const QString &text) {
    return mfs_permissions_string_to_octal(text.toLatin1().constData()); // one byte per character
}

} // namespace MWCore
