// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// What the system tells of an item beyond its record, and conversions.
#include "core/mfs_permissions.h"
#include "model/item/MXFileSystemObject.h"
#include "model/listing/ListedTree.h"
#include "model/values/MXLabelManager.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/launch/Bundle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

#include <sys/stat.h>

#include <QLocale>

namespace MWCore {
namespace {

constexpr uint32_t kNoCode = 0xFFFFFFFF;
constexpr double kCarbonReferenceDate = -3'061'152'000; // seconds
constexpr int64_t kSecondsFrom1970To2001 = 978'307'200;
constexpr int64_t kMilliseconds = 1000;
constexpr int64_t kFractions = 65536; // of a second

/// As the C library's "%B %d, %Y %I:%M%p" has it.
QString asString(const QDateTime &date) {
    return date.isNull() ? QString()
                         : QLocale::system().toString(date.toLocalTime(),
                                                      QStringLiteral("MMMM dd, yyyy hh:mmAP"));
}

MXPermission::Ptr permissionsOf(mode_t mode) {
    unsigned char sticky = 0;
    unsigned char setGroup = 0;
    unsigned char setUser = 0;
    auto permissions =
        MXPermission::initWithNumber(modetToPerms(mode, &sticky, &setGroup, &setUser));
    if (sticky)
        permissions->toggleStickyBit();
    if (setGroup)
        permissions->toggleSgidBit();
    if (setUser)
        permissions->toggleSuidBit();
    return permissions;
}

} // namespace

OSStatus MXFileSystemObject::getCatalogInfo(FSCatalogInfoBitmap whichInfo,
                                            FSCatalogInfo *info) const {
    return isLocal() ? FSGetCatalogInfoForPath(representation(), whichInfo, info) : paramErr;
}

bool MXFileSystemObject::isThere() const {
    struct stat item = {};
    return isLocal() && lstat(representation().constData(), &item) == 0;
}

MXPermission::Ptr MXFileSystemObject::permissions() const {
    if (permissions_)
        return permissions_;
    struct stat item = {};
    if (!isLocal())
        permissions_ =
            MXPermission::initWithNumber(_fso_get_int_for_attribute(MFS_KEY_PERMISSIONS));
    else if (isListedChild() && !hasPathOfHost()) // the listing looked at it
        permissions_ = permissionsOf(record_->mode);
    else
        permissions_ = permissionsOf(stat(representation().constData(), &item) == 0 ? item.st_mode
                                                                                    : mode_t(0));
    return permissions_;
}

void MXFileSystemObject::setPermissions(const MXPermission::Ptr &permissions) {
    permissions_ = permissions;
}

QString MXFileSystemObject::permissionsAsString() const {
    return permissions()->stringValue();
}

OrMarker<QDateTime> MXFileSystemObject::dateModified() const {
    FSCatalogInfo info;
    if (getCatalogInfo(kFSCatInfoContentMod, &info) != noErr)
        return OrMarker<QDateTime>::marker();
    return UTCDateTimeToNSDate(info.contentModDate);
}

QDateTime MXFileSystemObject::dateCreated() const {
    FSCatalogInfo info;
    const OSStatus status = getCatalogInfo(kFSCatInfoCreateDate, &info);
    return status == noErr ? UTCDateTimeToNSDate(info.createDate) : QDateTime();
}

QString MXFileSystemObject::dateModifiedAsString() const {
    return asString(dateModified().value());
}

QString MXFileSystemObject::dateCreatedAsString() const {
    return asString(dateCreated());
}

uint32_t MXFileSystemObject::type() const {
    FSCatalogInfo info;
    return getCatalogInfo(kFSCatInfoFinderInfo, &info) == noErr ? info.finderInfo.type : kNoCode;
}

uint32_t MXFileSystemObject::creator() const {
    FSCatalogInfo info;
    return getCatalogInfo(kFSCatInfoFinderInfo, &info) == noErr ? info.finderInfo.creator : kNoCode;
}

QString MXFileSystemObject::typeAsString() const {
    return isLocal() ? osTypeToFourCharCode(type()) : QString();
}

QString MXFileSystemObject::creatorAsString() const {
    return isLocal() ? osTypeToFourCharCode(creator()) : QString();
}

MXLabel::Ptr MXFileSystemObject::label() const {
    const MXLabelManager::Ptr labels = MXLabelManager::sharedLabelManager();
    if (!isLocal())
        return labels->noneLabel();
    FSCatalogInfo info;
    const OSStatus status = getCatalogInfo(kFSCatInfoFinderInfo, &info);
    if (status != noErr && !isThere()) {
        qCWarning(mwcoreLog, "Could not get FSRef");
        return {};
    }
    const int number = status == noErr ? info.finderInfo.labelNumber() : 0;
    return labels->labelWithID(static_cast<uint16_t>(number));
}

bool MXFileSystemObject::isInvisible() const {
    if (isRemote())
        return false;
    FSCatalogInfo info;
    const OSStatus status = getCatalogInfo(kFSCatInfoFinderInfo, &info);
    if (status != noErr && !isThere())
        qCWarning(mwcoreLog, "Could not get FSRef");
    return status == noErr && info.finderInfo.flags.testFlag(kIsInvisible);
}

bool MXFileSystemObject::isLocked() const {
    if (!isLocal() || isPackage())
        return false;
    FSCatalogInfo info;
    const OSStatus status = getCatalogInfo(kFSCatInfoNodeFlags, &info);
    if (status != noErr)
        recordCarbonError(status);
    return status == noErr && info.nodeFlags.testFlag(kFSNodeLockedMask);
}

void MXFileSystemObject::recordCarbonError(OSStatus error) const {
    qCWarning(mwcoreLog, "MXFileSystemObject : isLocked : Error : %d", int(error));
}

QString MXFileSystemObject::volumeName() const {
    FSCatalogInfo info;
    QString volume;
    if (getCatalogInfo(kFSCatInfoVolume, &info) != noErr) {
        qCWarning(mwcoreLog, "getLocalFileSize : Error Getting info");
        return {};
    }
    const OSStatus status = FSGetVolumeInfo(info.volume, kFSVolInfoNone, nullptr, &volume);
    return status == noErr ? volume : QString();
}

QString MXFileSystemObject::versionString() const {
    const QByteArray path = representation();
    const auto bundle = isLocal() && !path.isEmpty() ? Bundle::open(path) : std::nullopt;
    const QVariant version = bundle ? bundle->value("CFBundleGetInfoString") : QVariant();
    return version.typeId() == QMetaType::QString ? version.toString() : QString();
}

std::unique_ptr<FSRef> MXFileSystemObject::fsRef() const {
    if (!isLocal())
        return nullptr;
    auto reference = std::make_unique<FSRef>();
    const OSStatus status = FSPathMakeRef(representation(), reference.get());
    if (status == noErr)
        return reference;
    qCWarning(mwcoreLog).noquote().nospace()
        << "\tERROR : MXFileSystemObject : Could not get FSRef for item at path: "
        << completePath();
    qCWarning(mwcoreLog, "\tERROR : MXFileSystemObject : Error : %d", int(status));
    return nullptr;
}

std::unique_ptr<FSSpec> MXFileSystemObject::_fsSpec() const {
    const auto reference = fsRef();
    auto described = std::make_unique<FSSpec>();
    return reference && FSMakeSpec(*reference, described.get()) == noErr ? std::move(described)
                                                                         : nullptr;
}

QString MXFileSystemObject::osTypeToFourCharCode(uint32_t code) {
    std::array<char, 5> text{};
    for (std::size_t index = 0; index < 4; ++index)
        text[index] = static_cast<char>(code >> (24 - 8 * index));
    return stringWithFileSystemRepresentation(text.data());
}

uint32_t MXFileSystemObject::fourCharCodeToOSType(const QString &text) {
    uint32_t code = 0;
    const QByteArray bytes = cString(text);
    std::memcpy(&code, bytes.constData(),
                std::min(sizeof code, static_cast<std::size_t>(bytes.size())));
    return code;
}

double MXFileSystemObject::carbonReferenceDate() {
    return kCarbonReferenceDate;
}

QDateTime MXFileSystemObject::UTCDateTimeToNSDate(UTCDateTime utc) {
    const auto seconds = static_cast<int64_t>(utc / kFractions) +
                         static_cast<int64_t>(kCarbonReferenceDate) + kSecondsFrom1970To2001;
    const auto fraction = static_cast<int64_t>(utc % kFractions);
    return QDateTime::fromMSecsSinceEpoch(
        seconds * kMilliseconds + (fraction * kMilliseconds + kFractions / 2) / kFractions,
        Qt::UTC);
}

void MXFileSystemObject::NSDateToUTCDateTime(const QDateTime &date, UTCDateTime *utcTime) {
    *utcTime = 0;
    if (!date.isValid())
        return;
    constexpr int64_t kFrom1904To1970 =
        -(int64_t(kCarbonReferenceDate) + kSecondsFrom1970To2001) * kMilliseconds;
    const auto milliseconds =
        static_cast<uint64_t>(std::max<int64_t>(date.toMSecsSinceEpoch(), -kFrom1904To1970)) +
        static_cast<uint64_t>(kFrom1904To1970);
    const uint64_t seconds = milliseconds / kMilliseconds;
    const uint64_t rest = milliseconds % kMilliseconds;
    constexpr uint64_t kLastSecond = std::numeric_limits<UTCDateTime>::max() / kFractions;
    *utcTime = seconds > kLastSecond ? std::numeric_limits<UTCDateTime>::max()
                                     : seconds * kFractions + rest * kFractions / kMilliseconds;
}

std::unique_ptr<struct stat> MXFileSystemObject::statsForFileAtPath(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    auto result = std::make_unique<struct stat>();
    return bytes && stat(bytes->constData(), result.get()) == 0 ? std::move(result) : nullptr;
}

QByteArray MXFileSystemObject::nsToCString(const QString &text) {
    return cString(text);
}

bool MXFileSystemObject::isBigEndian() {
    return std::endian::native == std::endian::big;
}

} // namespace MWCore
