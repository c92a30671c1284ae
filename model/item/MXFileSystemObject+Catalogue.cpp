// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Metadata that is not in the record, and conversions.
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
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

#include <QLocale>

namespace MWCore {
namespace {

constexpr uint32_t kNoCode = 0xFFFFFFFF;
constexpr double kCarbonReferenceDate = -3'061'152'000; // seconds
constexpr int64_t kMilliseconds = 1000;                 // in a second
constexpr int64_t kNanoseconds = 1'000'000;             // in a millisecond

/// As strftime(3) formats with "%B %d, %Y %I:%M%p".
QString asString(const QDateTime &date) {
    return date.isNull() ? QString()
                         : QLocale::system().toString(date.toLocalTime(),
                                                      QStringLiteral("MMMM dd, yyyy hh:mmAP"));
}

} // namespace

std::optional<FSCatalogInfo> MXFileSystemObject::catalogInfo(FSCatalogInfoBitmap whichInfo,
                                                             OSStatus *status) const {
    FSCatalogInfo info;
    const OSStatus outcome =
        isLocal() ? FSGetCatalogInfoForPath(pathBytes(), whichInfo, &info) : paramErr;
    if (status)
        *status = outcome;
    return outcome == noErr ? std::optional(info) : std::nullopt;
}

bool MXFileSystemObject::exists() const {
    struct stat item = {};
    return isLocal() && lstat(pathBytes().constData(), &item) == 0;
}

MXPermission::Ptr MXFileSystemObject::permissions() const {
    if (permissions_)
        return permissions_;
    struct stat item = {};
    if (!isLocal())
        permissions_ =
            MXPermission::initWithNumber(_fso_get_int_for_attribute(MFS_KEY_PERMISSIONS));
    else if (isListedChild() && !hasCustomPath()) // examined by the listing
        permissions_ = MXPermission::initWithMode(record_->mode);
    else
        permissions_ = MXPermission::initWithMode(
            stat(pathBytes().constData(), &item) == 0 ? item.st_mode : mode_t(0));
    return permissions_;
}

void MXFileSystemObject::setPermissions(const MXPermission::Ptr &permissions) {
    permissions_ = permissions;
}

QString MXFileSystemObject::permissionsAsString() const {
    return permissions()->stringValue();
}

ItemMetadata MXFileSystemObject::metadata(ItemMetadata::Parts parts) const {
    return isLocal() ? ItemMetadata::read(pathBytes(), parts) : ItemMetadata();
}

OrMarker<QDateTime> MXFileSystemObject::dateModified() const {
    const auto info = catalogInfo(kFSCatInfoContentMod);
    if (!info)
        return OrMarker<QDateTime>::marker();
    return UTCDateTimeToNSDate(info->contentModDate);
}

QDateTime MXFileSystemObject::dateCreated() const {
    const auto info = catalogInfo(kFSCatInfoCreateDate);
    return info ? UTCDateTimeToNSDate(info->createDate) : QDateTime();
}

QString MXFileSystemObject::dateModifiedAsString() const {
    return asString(dateModified().value());
}

QString MXFileSystemObject::dateCreatedAsString() const {
    return asString(dateCreated());
}

uint32_t MXFileSystemObject::type() const {
    const auto info = catalogInfo(kFSCatInfoFinderInfo);
    return info ? info->finderInfo.type : kNoCode;
}

uint32_t MXFileSystemObject::creator() const {
    const auto info = catalogInfo(kFSCatInfoFinderInfo);
    return info ? info->finderInfo.creator : kNoCode;
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
    const auto info = catalogInfo(kFSCatInfoFinderInfo);
    if (!info && !exists()) {
        qCWarning(mwcoreLog, "Could not get FSRef");
        return {};
    }
    const int number = info ? info->finderInfo.labelNumber() : 0;
    return labels->labelWithID(static_cast<uint16_t>(number));
}

bool MXFileSystemObject::isInvisible() const {
    if (isRemote())
        return false;
    const auto info = catalogInfo(kFSCatInfoFinderInfo);
    if (!info && !exists())
        qCWarning(mwcoreLog, "Could not get FSRef");
    return info && info->finderInfo.flags.testFlag(kIsInvisible);
}

bool MXFileSystemObject::isLocked() const {
    if (!isLocal() || isPackage())
        return false;
    OSStatus status = noErr;
    const auto info = catalogInfo(kFSCatInfoNodeFlags, &status);
    if (!info)
        recordCarbonError(status);
    return info && info->nodeFlags.testFlag(kFSNodeLockedMask);
}

void MXFileSystemObject::recordCarbonError(OSStatus error) const {
    qCWarning(mwcoreLog, "MXFileSystemObject : isLocked : Error : %d", int(error));
}

QString MXFileSystemObject::volumeName() const {
    const auto info = catalogInfo(kFSCatInfoVolume);
    if (!info) {
        qCWarning(mwcoreLog, "getLocalFileSize : Error Getting info");
        return {};
    }
    QString volume;
    const OSStatus status = FSGetVolumeInfo(info->volume, kFSVolInfoNone, nullptr, &volume);
    return status == noErr ? volume : QString();
}

QString MXFileSystemObject::versionString() const {
    const QByteArray path = pathBytes();
    const auto bundle = isLocal() && !path.isEmpty() ? Bundle::open(path) : std::nullopt;
    const QVariant version = bundle ? bundle->value("CFBundleGetInfoString") : QVariant();
    return version.typeId() == QMetaType::QString ? version.toString() : QString();
}

std::optional<FSRef> MXFileSystemObject::fsRef() const {
    if (!isLocal())
        return std::nullopt;
    FSRef reference;
    const OSStatus status = FSPathMakeRef(pathBytes(), &reference);
    if (status == noErr)
        return reference;
    qCWarning(mwcoreLog).noquote().nospace()
        << "\tERROR : MXFileSystemObject : Could not get FSRef for item at path: "
        << completePath();
    qCWarning(mwcoreLog, "\tERROR : MXFileSystemObject : Error : %d", int(status));
    return std::nullopt;
}

std::optional<FSSpec> MXFileSystemObject::_fsSpec() const {
    const auto reference = fsRef();
    FSSpec spec;
    return reference && FSMakeSpec(*reference, &spec) == noErr ? std::optional(spec) : std::nullopt;
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
    const timespec time = timeFrom(utc);
    const int64_t milliseconds = (time.tv_nsec + kNanoseconds / 2) / kNanoseconds;
    return QDateTime::fromMSecsSinceEpoch(time.tv_sec * kMilliseconds + milliseconds, Qt::UTC);
}

void MXFileSystemObject::NSDateToUTCDateTime(const QDateTime &date, UTCDateTime *utcTime) {
    *utcTime = 0;
    if (!date.isValid())
        return;
    const std::lldiv_t time = std::lldiv(date.toMSecsSinceEpoch(), kMilliseconds);
    const bool isBelow = time.rem < 0; // division rounds towards 0
    *utcTime = utcDateTimeFrom({static_cast<time_t>(time.quot - (isBelow ? 1 : 0)),
                                (time.rem + (isBelow ? kMilliseconds : 0)) * kNanoseconds});
}

std::optional<struct stat> MXFileSystemObject::statsForFileAtPath(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    struct stat item = {};
    return bytes && stat(bytes->constData(), &item) == 0 ? std::optional(item) : std::nullopt;
}

QByteArray MXFileSystemObject::nsToCString(const QString &text) {
    return cString(text);
}

bool MXFileSystemObject::isBigEndian() {
    return std::endian::native == std::endian::big;
}

} // namespace MWCore
