// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXSortOrder.h"

#include <MWCore/MXItemKind.h>
#include <MWCore/MXLabel.h>
#include <MWCore/MXNodeKind.h>
#include <MWCore/MXPermission.h>
#include <MWCore/MXURLObject.h>
#include <MWCore/OrMarker.h>

#include <MWCore/FileCatalogue.h>
#include <MWCore/FSSpec.h>
#include <MWCore/ItemIcon.h>
#include <MWCore/ItemMetadata.h>
#include <MWCore/mfs_fso.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/MXFileSystemObjectSize.h>
#include <MWCore/MXSizeMeasurement.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QSharedData>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <sys/stat.h>

namespace MWCore {

struct Classification;
struct ItemIconFacts;
class ListedKinds;
class ListedTree;
class VisibleIcons;

/// A file, folder, link or other item of a file system, and the objects of a folder's children. An
/// item can be remote if the host makes its record.
///
/// An object wraps a record, which is a snapshot; only the operations that say so ask the system.
/// Permissions and date text are cached at the first call and never refreshed: make a new object
/// for the current state. Paths and names are texts of stringWithFileSystemRepresentation(). A null
/// text, date or pointer means that there is no value.
///
/// Reference-counted. The records of a listing live as long as any object that wraps one of them; a
/// record made by the host stays the host's and must outlive its object. An object and its tree
/// belong to one thread at a time.
class MWCORE_EXPORT MXFileSystemObject : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXFileSystemObject>;

    MXFileSystemObject(const MXFileSystemObject &) = delete;
    MXFileSystemObject &operator=(const MXFileSystemObject &) = delete;
    virtual ~MXFileSystemObject();

    /// @name Creation
    /// If @p prototype is given, the new objects are of its class (see alloc()).
    /// @{

    /// An object without a record.
    [[nodiscard]] static Ptr init();

    /// The item at @p path, following links. With @p assimilatingContents, a folder also gets its
    /// children; if it cannot be read it has none, and contentsError() gives the cause. Returns
    /// null, with a line in the log and the cause in @p error (which may be null), if the item
    /// cannot be examined; after folderChangesErr, trying again may succeed.
    ///
    /// The core's trace lines are not part of the log. They go to standard output or to the stream
    /// set by mfs_set_trace_stream() (mfs_utility.h); a null stream silences them.
    [[nodiscard]] static Ptr newFSOForLocalPath(const QString &path, bool assimilatingContents,
                                                OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    /// The same with children and without messages in the log; trace lines are still written.
    [[nodiscard]] static Ptr newFSOForLocalPath(const QString &path, OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    // Otherwise, a prototype in place of the error would convert to bool.
    static Ptr newFSOForLocalPath(const QString &path,
                                  const MXFileSystemObject *prototype) = delete;

    /// The item at @p path itself: a link is not followed, and a folder gets no children. Returns
    /// null, with the cause in @p error (which may be null), if the item cannot be examined.
    [[nodiscard]] static Ptr newFSOForLocalItem(const QString &path, OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    /// The object that wraps @p record; made if there is none yet. A new remote folder gets its
    /// children; a new local item gets none and is not identified. A null record fails the
    /// assertion "MXFilesystemObject : File Info Was NULL"; if that returns, the result is null.
    [[nodiscard]] static Ptr newFSOWithCStruct(mfs_fso *record,
                                               const MXFileSystemObject *prototype = nullptr);

    /// @}
    /// @name Record
    /// @{

    /// The object's record, or null.
    [[nodiscard]] mfs_fso *cstruct() const { return record_; }
    [[nodiscard]] mfs_fso *_fso_struct() const { return record_; }

    /// Replaces the record, but does not set the `object` of @p record.
    void _setCStruct(mfs_fso *record);

    /// The record's number for @p key (MFS_KEY_...), truncated to 32 bits. 0 if there is no record
    /// or the key is that of a text or a record.
    [[nodiscard]] int32_t _fso_get_int_for_attribute(int32_t key) const;

    /// The record's text for @p key; null if the key is not that of a text.
    [[nodiscard]] QString _fso_get_string_for_attribute(int32_t key) const;
    void dumpToStdOut() const;

    /// @}
    /// @name Names and paths
    /// @{

    [[nodiscard]] QString completePath() const;

    /// The path in file-system representation; empty if the text cannot be a path.
    [[nodiscard]] QByteArray pathBytes() const;

    /// Makes the object describe the item at another path; null restores the record's. Changes
    /// names, URLs and what is asked of the system (permissions, codes, label, flags, catalogue
    /// dates, size, reference), but not the disk, cached values or, until identify(), the kind.
    /// Everything else stays as in the record.
    void setCompletePath(const QString &path);

    /// The last component of the path; for a volume, the volume's name, cached at the first call.
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const { return name(); }
    [[nodiscard]] QString nameWithoutExtension() const;
    [[nodiscard]] bool nameStartsWithADot() const;

    /// The record's extension, without its dot.
    [[nodiscard]] QString extension() const;
    /// The path's extension, without its dot; "" if it has none.
    [[nodiscard]] QString extensionReal() const;

    [[nodiscard]] bool isRoot() const; ///< whether the path is "/"
    [[nodiscard]] QString parentPath() const;
    /// The folder in whose listing this item is.
    [[nodiscard]] Ptr parent() const;

    // From urlObject().
    [[nodiscard]] QString url() const;
    [[nodiscard]] QString urlWithoutPath() const;
    [[nodiscard]] QString cleanURL() const;

    /// The "file:" URL of the path, for previewers. Its encoded form preserves every byte.
    [[nodiscard]] QUrl previewItemURL() const;
    [[nodiscard]] QString previewItemTitle() const { return name(); }
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): called on an item
    [[nodiscard]] QVariant previewItemDisplayState() const { return {}; }

    /// @}
    /// @name From the record
    /// @{

    [[nodiscard]] bool isLocal() const { return mfs_fso_isLocal(record_) != 0; }
    [[nodiscard]] bool isRemote() const { return mfs_fso_isRemote(record_) != 0; }

    /// Account names, or "Unknown". Setting one changes only what this object reports, not the
    /// disk; null restores the record's.
    [[nodiscard]] QString owner() const;
    void setOwner(const QString &owner);
    [[nodiscard]] QString group() const;
    void setGroup(const QString &group);
    [[nodiscard]] bool ownedByCurrentUser() const;

    [[nodiscard]] int32_t links() const;
    /// The item's own size in bytes; 0 without a record. sizeObject() adds a folder's contents.
    [[nodiscard]] int64_t size() const { return record_ ? mfs_fso_full_size(record_) : 0; }

    /// The permission, set-id and sticky bits (07777), which never change; for a link, those of its
    /// target, or 0 if it is broken.
    [[nodiscard]] uint32_t mode() const { return record_ ? record_->mode : 0; }

    /// The type of the item's node. For devices, fifos and sockets, makes one system call.
    [[nodiscard]] MXNodeKind nodeKind() const;

    /// The final target of a link, as a path without links. Null if the item is not a link, the
    /// link is broken, or its target has no path (a pipe in /proc).
    [[nodiscard]] QString resolvedLinkTarget() const;

    // 0 without a record.
    [[nodiscard]] int32_t fileCount() const { return record_ ? mfs_fso_file_count(record_) : 0; }
    [[nodiscard]] int32_t subFolderCount() const;

    /// Modification time in seconds since 1970-01-01 UTC; -1 without a record.
    [[nodiscard]] int64_t dateAsTimeT() const { return record_ ? record_->mod_time : -1; }
    /// The same as a text in local time: "Today, 14:05:09".
    [[nodiscard]] QString date() const;

    /// For the keys "NAME", "DATE", "USER", "GROUP", "PERMISSIONS": name(), date(), owner(),
    /// group(), permissionsAsString(). Null for any other key.
    [[nodiscard]] QString getObjectForKey(const QString &key) const;

    /// @}
    /// @name From the system, for local items
    /// @{

    /// A link reports its target's permissions. A listed child reports the listing's snapshot,
    /// unless its path was set; any other local item is examined at the first call (number 0 if
    /// that fails); a remote item reports its record's.
    ///
    /// The object is cached and shared with the caller: toggling a bit changes what the item
    /// reports. Use MXPermission::copy() for an independent object.
    [[nodiscard]] MXPermission::Ptr permissions() const;

    /// Replaces the cached object; after null, the next call makes it again. The disk is not
    /// changed; use chmod(2) for that.
    void setPermissions(const MXPermission::Ptr &permissions);
    [[nodiscard]] QString permissionsAsString() const;

    /// A snapshot for many questions; each operation below asks the system again. If the item is
    /// not local, every status is paramErr. ListedMetadata reads that of a whole folder.
    [[nodiscard]] ItemMetadata metadata(ItemMetadata::Parts parts = ItemMetadata::kAllParts) const;

    /// In UTC. The marker if the item is not local or on failure.
    [[nodiscard]] OrMarker<QDateTime> dateModified() const;
    /// In UTC. Null if the item is not local, if its file system stores no such date or on failure.
    [[nodiscard]] QDateTime dateCreated() const;

    // "March 04, 2008 05:45PM", in local time and the user's language. Null without the date.
    [[nodiscard]] QString dateModifiedAsString() const;
    [[nodiscard]] QString dateCreatedAsString() const;

    // Four-character codes; 0xFFFFFFFF if the item is not local or on failure.
    [[nodiscard]] uint32_t type() const;
    [[nodiscard]] uint32_t creator() const;
    [[nodiscard]] QString typeAsString() const;
    [[nodiscard]] QString creatorAsString() const;

    /// A label of the shared label manager; its noneLabel() if the item is not local. Null, with a
    /// line in the log, if the item does not exist.
    [[nodiscard]] MXLabel::Ptr label() const;

    /// Whether the item is immutable (chattr(1)); false for a package. Failures are reported to
    /// recordCarbonError().
    [[nodiscard]] bool isLocked() const;

    /// The name of the item's volume. Null on failure, with a line in the log if the item cannot be
    /// examined.
    [[nodiscard]] QString volumeName() const;
    /// The "CFBundleGetInfoString" of the bundle at the path, or null.
    [[nodiscard]] QString versionString() const;

    /// A reference to the item. nullopt on failure, with two lines in the log if it is local.
    [[nodiscard]] std::optional<FSRef> fsRef() const;
    [[nodiscard]] std::optional<FSSpec> _fsSpec() const;

    /// @}
    /// @name Conversions
    /// @{

    /// The characters of a code, most significant byte first, up to the first zero.
    [[nodiscard]] static QString osTypeToFourCharCode(uint32_t code);
    /// The first four bytes of @p text in host byte order; on a little-endian machine deliberately
    /// not the inverse of osTypeToFourCharCode().
    [[nodiscard]] static uint32_t fourCharCodeToOSType(const QString &text);

    /// Seconds from 2001-01-01 to 1904-01-01, both 00:00:00 GMT.
    [[nodiscard]] static double carbonReferenceDate();
    [[nodiscard]] static QDateTime UTCDateTimeToNSDate(UTCDateTime utc);
    /// Gives 0 for a date before 1904 and for the null date.
    static void NSDateToUTCDateTime(const QDateTime &date, UTCDateTime *utcTime);

    /// stat(2) of the item at @p path, following links; nullopt on failure.
    [[nodiscard]] static std::optional<struct stat> statsForFileAtPath(const QString &path);

    /// cString() of @p text.
    [[nodiscard]] static QByteArray nsToCString(const QString &text);
    [[nodiscard]] static bool isBigEndian();

    /// @}
    /// @name Children and sorting
    /// The visible list is the filtered list while isFiltered(), else the list of all children.
    /// @{

    /// Why newFSOForLocalPath() could not list the folder; noErr if it could or for another item.
    [[nodiscard]] OSStatus contentsError() const;

    [[nodiscard]] qsizetype totalItems() const { return visibleList().size(); }
    [[nodiscard]] qsizetype count() const { return totalItems(); }

    // Null if the index is out of range.
    [[nodiscard]] Ptr subitemAtIndex(qsizetype index) const { return visibleList().value(index); }
    [[nodiscard]] Ptr objectAtIndex(qsizetype index) const { return subitemAtIndex(index); }

    /// A copy of the visible list, which later hiding and sorting do not change.
    [[nodiscard]] QList<Ptr> visibleItems() const { return visibleList(); }

    [[nodiscard]] bool isSorted() const { return sortAttribute() != MXSortAttributeNone; }
    [[nodiscard]] MXSortAttribute sortAttribute() const;
    [[nodiscard]] MXSortOrder sortOrder() const;

    /// Sorts the visible list stably: least accessible, oldest or smallest first, names from Z to
    /// A. The reversed order is the opposite: names from A to Z. An unknown attribute is stored and
    /// changes no list.
    void setSortsByAttribute(MXSortAttribute attribute, MXSortOrder withOrder);

    // Compare this item with another: -1, 0 or 1. Names are compared in descending order, ignoring
    // case; the size of a folder is 0.
    [[nodiscard]] int _sortByPermissions(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortByDate(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortByName(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortBySize(const MXFileSystemObject &other) const;

    [[nodiscard]] static QList<Ptr> _swapArray(const QList<Ptr> &items); ///< in reverse order

    /// @}
    /// @name Filtering
    /// To filter a folder, the host calls its invalidateFilteredItems(), hides children, then calls
    /// setIsFiltered(true).
    /// @{

    /// Makes the objects of all children from the record, files before folders, and identifies the
    /// local ones. Clears the filtered list.
    void performAssimilation();
    /// The object of a child by its index, files before folders. Null if out of range.
    [[nodiscard]] Ptr child_fso_at_index(int32_t index) const;

    // 0xFFFFFFFF without a record.
    [[nodiscard]] uint32_t _subdirectoryCount() const;
    [[nodiscard]] uint32_t _fileCount() const;

    /// Ends filtering and puts every child back into the filtered list.
    void invalidateFilteredItems();
    /// Removes @p child from the filtered list.
    void hideItem(const Ptr &child);
    /// Removes the item from its parent's filtered list, whatever @p hidden is.
    void setIsHidden(bool hidden);
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): called on an item
    [[nodiscard]] bool isHidden() const { return false; } ///< always

    [[nodiscard]] bool isFiltered() const;
    void setIsFiltered(bool filtered);
    /// The number of children that are not in the filtered list.
    [[nodiscard]] int32_t filteredItemCount() const;

    /// @}
    /// @name Identification
    /// @{

    /// Updates the kind from the item at the path. newFSOForLocalPath() identifies the item and its
    /// children, newFSOForLocalItem() the item.
    void identify();
    [[nodiscard]] MXItemKind fsoKind() const { return kind_; }

    /// For a link or alias: folder, file, or unknown (any other node, or a target that would have
    /// to be searched for).
    [[nodiscard]] MXItemKind aliasOrLinkTargetKind() const { return targetKind_; }

    /// For a link: its text, made absolute with the link's folder and with one leading "../"
    /// resolved; if the link was removed, its folder and "/". For an alias: the target's path, or
    /// the alias's own path if the target is not found. Null for any other item.
    [[nodiscard]] QString aliasOrLinkTargetPath() const;
    /// Whether aliasOrLinkTargetPath() is null, as for an item that is neither link nor alias.
    [[nodiscard]] bool aliasOrLinkTargetIsInvalid() const;

    /// The kind in the user's language; "Remote File" for a remote item.
    [[nodiscard]] QString kindAsString() const;

    // For a remote item only isDir, isFolder, isLink and isFile can be true. Packages, application
    // bundles and volumes are also directories. An alias is not a file.
    [[nodiscard]] bool isPackage() const { return isLocalKind(MXItemKindPackage); }
    [[nodiscard]] bool isVolume() const { return isLocalKind(MXItemKindVolume); }
    [[nodiscard]] bool isApplication() const { return isLocalKind(MXItemKindApplication); }
    [[nodiscard]] bool isAlias() const { return isLocalKind(MXItemKindAlias); }
    [[nodiscard]] bool isPackagedApplication() const;
    [[nodiscard]] bool isDir() const;
    [[nodiscard]] bool isFolder() const { return isDir(); }
    [[nodiscard]] bool isLink() const;
    [[nodiscard]] bool isFile() const;

    /// Whether the record is that of a symbolic link. A broken link, whose target is missing or
    /// cannot be examined, is of unknown kind: isLink() is false.
    [[nodiscard]] bool isSymbolicLink() const { return mfs_fso_isLink(record_) != 0; }
    [[nodiscard]] bool isBrokenLink() const;

    [[nodiscard]] bool isApplicationPackaged() const { return isApplicationPackaged_; }
    void setApplicationIsPackaged(bool packaged) { isApplicationPackaged_ = packaged; }

    /// Whether it is a file with the extension of an image format that Qt can read; cached.
    [[nodiscard]] bool isGraphicFile() const;
    /// Whether the item's Finder flag kIsInvisible is set; asks the system.
    [[nodiscard]] bool isInvisible() const;
    /// Whether the file, or a packaged application's executable, starts with "Joy!", the magic of
    /// code fragments.
    [[nodiscard]] bool isCarbonApplication() const;

    /// The kind of the item at @p path. Sets @p typeWePointTo only for a link or alias, and
    /// @p isPackaged (true for an application bundle) only if the item exists. Both may be null.
    [[nodiscard]] static MXItemKind typeForItemAtPath(const QString &path,
                                                      MXItemKind *typeWePointTo, bool *isPackaged);

    /// The target of the alias file at @p path, following chains; @p path if it is not an alias
    /// file or its target is not found. Null for null.
    [[nodiscard]] static QString resolveAliasFromFileAtPath(const QString &path);
    [[nodiscard]] static QString private_resolveAliasPath(const QString &path);
    [[nodiscard]] static QString resolveAliasPath(const QString &path);

    /// @}
    /// @name Size
    /// @{

    /// The size of the item and its contents. A folder, package or application bundle is the sum of
    /// everything below it, where a link adds its own length and is not followed; a remote item has
    /// the size in its record. The result is cached, even if the measurement was cancelled; only a
    /// volume's comes from its file system at each call. Null if getLocalFileSize() or
    /// getVolumeInformation() fails; a folder that is gone or cannot be read counts as empty.
    [[nodiscard]] MXFileSystemObjectSize::Ptr
    sizeObject(const MXSizeProgressCallback &progress = {}) const;
    void invalidateCachedSize();
    /// Measures with @p options and caches nothing. nullopt if sizeObject() would be null.
    [[nodiscard]] std::optional<MXSizeMeasurement>
    measureSize(const MXSizeOptions &options = {}) const;

    /// Stops the current measurement, and every later one of this item after one entry. Any thread,
    /// and signal handlers.
    void cancelFolderSizeCalulation() { myCancelFolderSizeCalc_ = true; }
    [[nodiscard]] bool folderSizeCalulationCancelled() const { return myCancelFolderSizeCalc_; }

    /// The item's own forks, or a link's length, without `physicalTotalSize`. nullopt, with lines
    /// in the log, if the item does not exist or a fork cannot be read.
    [[nodiscard]] std::optional<MXFSOSizeRecord> getLocalFileSize() const;

    /// Capacity, free space and used inodes (as files) of the item's volume. nullopt on failure,
    /// with lines in the log if the item does not exist.
    [[nodiscard]] std::optional<MXFSOSizeRecord> getVolumeInformation() const;

    /// The total size, or a volume's used space, formatted by format_size(). The first call
    /// measures and returns null; later calls return the cached text. The marker if sizeObject() is
    /// null.
    [[nodiscard]] OrMarker<QString> totalSizeFormattedAsString() const;

    /// @}
    /// @name Icons
    /// Squares of 128 x 128 points. Never null.
    /// @{

    /// Whether the item's Finder flag kHasCustomIcon is set; asks the system. False if the item is
    /// not local or on failure.
    [[nodiscard]] bool hasCustomIcon() const;

    /// The icon of the item: the workspace's, with a badge for a link, an alias or a locked file; a
    /// generic one for a remote item. With @p useCached it is kept in the object, and later calls
    /// return the same one, whatever has happened to the item; without, it is made again and not
    /// kept.
    [[nodiscard]] ItemIcon::Ptr iconForFSOUsingCached(bool useCached) const;

    /// The icon that the object keeps, or null. keepIcon() replaces it; null makes the next
    /// iconForFSOUsingCached(true) look again.
    [[nodiscard]] ItemIcon::Ptr keptIcon() const { return myCachedImage_; }
    void keepIcon(const ItemIcon::Ptr &icon) const { myCachedImage_ = icon; }

    /// The workspace's icon with "AliasBadge" or "LockedBadge" over it.
    [[nodiscard]] ItemIcon::Ptr fileIconWithLink() const;
    [[nodiscard]] ItemIcon::Ptr fileIconWithLock() const;
    /// The generic file icon with "AliasBadge" over it.
    [[nodiscard]] static ItemIcon::Ptr remoteFileIconWithLink();

    // The theme's icons of a plain document and of a folder.
    [[nodiscard]] static ItemIcon::Ptr genericFileIcon();
    [[nodiscard]] static ItemIcon::Ptr genericFolderIcon();

    /// @}

protected:
    MXFileSystemObject();

    /// A new object of the receiver's class. Derived classes override it: it makes the objects of
    /// children and parents (docs/examples/checksums).
    [[nodiscard]] virtual Ptr alloc() const;

    /// The item's URL, or null. Here: its "file:" URL.
    [[nodiscard]] virtual std::unique_ptr<MXURLObject> urlObject() const;

    /// Called if isLocked() fails. Here: logs the error.
    virtual void recordCarbonError(OSStatus error) const;

private:
    struct Contents;
    struct RareTexts;
    using Tree = QExplicitlySharedDataPointer<ListedTree>;
    enum class Messages { Logged, None };

    static Ptr newForLocalPath(const QString &path, bool assimilatingContents, Messages messages,
                               OSStatus *error, const MXFileSystemObject *prototype);
    [[nodiscard]] ItemIcon::Ptr chosenIcon() const;
    static Ptr wrap(mfs_fso *record, const Tree &tree, const MXFileSystemObject *prototype);
    static void release(QList<Ptr> children);

    [[nodiscard]] RareTexts &rareTexts() const;
    Contents &contents();
    void assimilate(const ListedKinds *kinds);
    void makeChildren(const ListedKinds *kinds);
    void identifyAs(const Classification &classification);
    [[nodiscard]] bool hasCustomPath() const;
    [[nodiscard]] ItemIconFacts iconFacts() const;
    friend class VisibleIcons;
    [[nodiscard]] QByteArrayView recordName() const;
    [[nodiscard]] bool isListedChild() const { return tree_ && mfs_fso_parent(record_); }
    [[nodiscard]] QByteArray nameBytes() const;
    void removeHiddenItems() const;
    [[nodiscard]] const QList<Ptr> &visibleList() const;
    [[nodiscard]] bool isLocalKind(MXItemKind kind) const { return kind_ == kind && !isRemote(); }
    [[nodiscard]] std::optional<FSCatalogInfo> catalogInfo(FSCatalogInfoBitmap whichInfo,
                                                           OSStatus *status = nullptr) const;
    [[nodiscard]] bool exists() const;

    mfs_fso *record_ = nullptr;
    Tree tree_; ///< null for a record made by the host
    mutable MXPermission::Ptr permissions_;
    mutable QString date_;
    std::unique_ptr<Contents> contents_; ///< null until the item is filled, filtered or sorted
    mutable std::unique_ptr<RareTexts> rareTexts_;
    mutable MXFileSystemObjectSize::Ptr cachedSizeObject_;
    mutable ItemIcon::Ptr myCachedImage_;
    uint64_t unflaggedState_ = 0; ///< as for iconForFile()
    MXItemKind kind_ = MXItemKindUnknown;
    MXItemKind targetKind_ = MXItemKindUnknown;
    mutable int8_t detectedTypeGraphic_ = 0; ///< 0 not yet known, 1 graphic, 2 not
    bool isApplicationPackaged_ = false;
    std::atomic<bool> myCancelFolderSizeCalc_ = false; ///< never reset
};

} // namespace MWCore
