// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXItemKind.h>
#include <MWCore/MXLabel.h>
#include <MWCore/MXNodeKind.h>
#include <MWCore/MXPermission.h>
#include <MWCore/MXURLObject.h>
#include <MWCore/OrMarker.h>

#include <MWCore/FileCatalogue.h>
#include <MWCore/FSSpec.h>
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
class ListedKinds;
class ListedTree;

/// What the children of a folder are sorted by: keys of the record.
enum MXSortAttribute : int32_t {
    MXSortAttributeNone = -1, ///< never sorted
    MXSortAttributeAccess = MFS_KEY_ACCESS_PERMS,
    MXSortAttributeDate = MFS_KEY_DATE_MODIFIED,
    MXSortAttributeName = MFS_KEY_NAME,
    MXSortAttributeSize = MFS_KEY_SIZE,
};

enum MXSortOrder : int64_t {
    MXSortOrderNone = -1, ///< never sorted
    MXSortOrderNatural = 0,
    MXSortOrderReversed = 1,
};

/// One item of a file system: a file, folder, link or other node, on this system or, around a
/// record that the host made, elsewhere. For a folder also the objects of what is in it.
///
/// An object answers from its record, which is a snapshot, and asks the system where an operation
/// says so. What it derives (permissions, date text) is kept from the first use on and never
/// refreshed: fresh state means a fresh object. Paths and names are the texts of
/// stringWithFileSystemRepresentation(). A null text, date or pointer means that there is none.
///
/// Reference-counted. The record tree of a listing lives as long as any object around one of its
/// records; a record that the host gave stays the host's and must outlive its object. An object and
/// its tree belong to one thread at a time.
class MWCORE_EXPORT MXFileSystemObject : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXFileSystemObject>;

    MXFileSystemObject(const MXFileSystemObject &) = delete;
    MXFileSystemObject &operator=(const MXFileSystemObject &) = delete;
    virtual ~MXFileSystemObject();

    /// @name Creation
    /// Objects are of the class of @p prototype where one is given (see alloc()).
    /// @{

    /// An object without a record.
    [[nodiscard]] static Ptr init();

    /// The item at @p path, links followed, and with @p assimilatingContents, for a folder, what is
    /// in it. Null, with a line in the log and the cause in @p error (which may be null), when it
    /// cannot be examined; after folderChangesErr another try may succeed. A folder that cannot be
    /// read comes without children; contentsError() says why.
    ///
    /// The core's trace lines are no part of the log: they go to standard output, or wherever
    /// mfs_set_trace_stream() (mfs_utility.h) sends them; mfs_set_trace_stream(nullptr) silences
    /// them.
    [[nodiscard]] static Ptr newFSOForLocalPath(const QString &path, bool assimilatingContents,
                                                OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    /// The same with contents and without messages in the log. The core's trace lines still appear.
    [[nodiscard]] static Ptr newFSOForLocalPath(const QString &path, OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    // Without this, a prototype in place of the error would be taken for "true".
    static Ptr newFSOForLocalPath(const QString &path,
                                  const MXFileSystemObject *prototype) = delete;

    /// The item at @p path itself: a link is not followed, and a folder comes without its contents.
    /// Null, with the cause in @p error (which may be null), when it cannot be examined.
    [[nodiscard]] static Ptr newFSOForLocalItem(const QString &path, OSStatus *error = nullptr,
                                                const MXFileSystemObject *prototype = nullptr);

    /// The object around @p record: the one that it has, else a new one. A remote folder gets its
    /// children; a local one does not, and is not identified. A null record fails the assertion
    /// "MXFilesystemObject : File Info Was NULL"; null where that returns.
    [[nodiscard]] static Ptr newFSOWithCStruct(mfs_fso *record,
                                               const MXFileSystemObject *prototype = nullptr);

    /// @}
    /// @name Record
    /// @{

    /// The record, which the object does not own; null without one.
    [[nodiscard]] mfs_fso *cstruct() const { return record_; }
    [[nodiscard]] mfs_fso *_fso_struct() const { return record_; }

    /// Takes @p record as the object's own. It does not learn of the object.
    void _setCStruct(mfs_fso *record);

    /// The record's number for @p key, cut to 32 bits; 0 without a record and for a key that means
    /// a text or a record.
    [[nodiscard]] int32_t _fso_get_int_for_attribute(int32_t key) const;

    /// The record's text for @p key; null for a key that means no text.
    [[nodiscard]] QString _fso_get_string_for_attribute(int32_t key) const;

    /// Prints the record to standard output.
    void dumpToStdOut() const;

    /// @}
    /// @name Names and paths
    /// @{

    [[nodiscard]] QString completePath() const;

    /// The path for system calls, byte for byte; empty for a text that no path can have.
    [[nodiscard]] QByteArray pathBytes() const { return representation(); }

    /// Makes the object answer for another path; null restores the record's. Nothing on the disk
    /// changes. Names, addresses and whatever is asked of the system follow the path: permissions,
    /// codes, label, flags, catalogue dates, size, reference. Answers that are kept already stay
    /// (see above), as does the kind until identify(). Extension, owner, group, links, counts,
    /// date(), dateAsTimeT(), parent and children stay those of the record.
    void setCompletePath(const QString &path);

    /// The last component of the path; of a volume its own name, kept from the first use on.
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const { return name(); }
    [[nodiscard]] QString nameWithoutExtension() const;
    [[nodiscard]] bool nameStartsWithADot() const;

    /// The record's: without its dot. extensionReal() is that of the path, "" for none.
    [[nodiscard]] QString extension() const;
    [[nodiscard]] QString extensionReal() const;

    [[nodiscard]] QString parentPath() const;

    /// The object of the folder whose listing this item is from.
    [[nodiscard]] Ptr parent() const;

    /// Whether the path is "/".
    [[nodiscard]] bool isRoot() const;

    /// The forms of the item's address, from urlObject().
    [[nodiscard]] QString url() const;
    [[nodiscard]] QString urlWithoutPath() const;
    [[nodiscard]] QString cleanURL() const;

    /// For previewers: the "file:" URL of the path, of which the encoded form has every byte.
    [[nodiscard]] QUrl previewItemURL() const;
    [[nodiscard]] QString previewItemTitle() const { return name(); }
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): of an item, as the others
    [[nodiscard]] QVariant previewItemDisplayState() const { return {}; }

    /// @}
    /// @name From the record
    /// @{

    [[nodiscard]] bool isLocal() const { return mfs_fso_isLocal(record_) != 0; }
    [[nodiscard]] bool isRemote() const { return mfs_fso_isRemote(record_) != 0; }

    /// Names; "Unknown" for an account that the system does not know. Setting one changes what
    /// this object reports and leaves the disk untouched; null restores the record's.
    [[nodiscard]] QString owner() const;
    void setOwner(const QString &owner);
    [[nodiscard]] QString group() const;
    void setGroup(const QString &group);
    [[nodiscard]] bool ownedByCurrentUser() const;

    [[nodiscard]] int32_t links() const;

    /// The item's own size in bytes; 0 without a record. sizeObject() adds what is in a folder.
    [[nodiscard]] int64_t size() const { return record_ ? mfs_fso_full_size(record_) : 0; }

    /// The permission, set-id and sticky bits (07777); a link's are its target's, 0 if it is
    /// broken. Unlike permissions(), they never change.
    [[nodiscard]] uint32_t mode() const { return record_ ? record_->mode : 0; }

    /// The type of the item's node. One system call tells devices, fifos and sockets apart.
    [[nodiscard]] MXNodeKind nodeKind() const;

    /// Where a link leads in the end, without links on the way. Null for anything else, for a
    /// broken link, and for a target that has no path, as a pipe below /proc.
    [[nodiscard]] QString resolvedLinkTarget() const;

    /// 0 without a record.
    [[nodiscard]] int32_t fileCount() const { return record_ ? mfs_fso_file_count(record_) : 0; }
    [[nodiscard]] int32_t subFolderCount() const {
        return record_ ? mfs_fso_subdirectory_count(record_) : 0;
    }

    /// When the contents changed, in seconds since 1970-01-01 UTC; -1 without a record.
    [[nodiscard]] int64_t dateAsTimeT() const { return record_ ? record_->mod_time : -1; }

    /// The same for people, in local time: "Today, 14:05:09".
    [[nodiscard]] QString date() const;

    /// What @p key ("NAME", "DATE", "USER", "GROUP", "PERMISSIONS") means: name(), date(), owner(),
    /// group(), permissionsAsString(). Null for any other key.
    [[nodiscard]] QString getObjectForKey(const QString &key) const;

    /// @}
    /// @name From the system, of local items
    /// @{

    /// A link reports its target's permissions. A listed child reports what the listing saw, unless
    /// a path was set for it; any other local item is examined at the first call, with number 0 if
    /// that fails; a remote item reports its record's.
    ///
    /// The result is the item's own object, kept from the first call on: toggling one of its bits
    /// changes what the item reports from then on. MXPermission::copy() makes one of your own.
    [[nodiscard]] MXPermission::Ptr permissions() const;

    /// Makes the item report @p permissions, which it shares with the caller; null has them found
    /// out anew at the next call. The disk stays untouched: use chmod(2) to change the item.
    void setPermissions(const MXPermission::Ptr &permissions);
    [[nodiscard]] QString permissionsAsString() const;

    /// A snapshot of dates, type, creator, label, flags and fork sizes, read at once; each of the
    /// operations below asks the system again. All parts fail with paramErr for other than local
    /// items. ListedMetadata reads the metadata of a whole folder.
    [[nodiscard]] ItemMetadata metadata(ItemMetadata::Parts parts = ItemMetadata::kAllParts) const {
        return isLocal() ? ItemMetadata::read(pathBytes(), parts) : ItemMetadata();
    }

    /// In UTC. The marker for other than local items and on failure.
    [[nodiscard]] OrMarker<QDateTime> dateModified() const;

    /// In UTC. Null for other than local items, on failure, and where it is not kept.
    [[nodiscard]] QDateTime dateCreated() const;

    /// "March 04, 2008 05:45PM", in local time and the user's language. Null without the date.
    [[nodiscard]] QString dateModifiedAsString() const;
    [[nodiscard]] QString dateCreatedAsString() const;

    /// Four-character codes; 0xFFFFFFFF for other than local items and on failure.
    [[nodiscard]] uint32_t type() const;
    [[nodiscard]] uint32_t creator() const;
    [[nodiscard]] QString typeAsString() const;
    [[nodiscard]] QString creatorAsString() const;

    /// One of the shared label manager; its noneLabel() for other than local items. Null, with a
    /// line in the log, when the item is gone.
    [[nodiscard]] MXLabel::Ptr label() const;

    /// Whether nobody may change the item; never for a package. Failures go to
    /// recordCarbonError().
    [[nodiscard]] bool isLocked() const;

    /// The name of the volume that holds the item. Null on failure, with a line in the log when the
    /// item cannot be examined.
    [[nodiscard]] QString volumeName() const;

    /// What the bundle at the path says about its version ("CFBundleGetInfoString").
    [[nodiscard]] QString versionString() const;

    /// A reference to the item. Nothing on failure, with two lines in the log.
    [[nodiscard]] std::optional<FSRef> fsRef() const;
    [[nodiscard]] std::optional<FSSpec> _fsSpec() const;

    /// @}
    /// @name Conversions
    /// @{

    /// The characters of a code, the most significant byte first, up to the first zero. The way
    /// back takes the first four bytes in the order of this machine's memory: on a little-endian
    /// one it is deliberately not the inverse.
    [[nodiscard]] static QString osTypeToFourCharCode(uint32_t code);
    [[nodiscard]] static uint32_t fourCharCodeToOSType(const QString &text);

    /// Seconds from 2001-01-01 to 1904-01-01, both 00:00:00 GMT.
    [[nodiscard]] static double carbonReferenceDate();
    [[nodiscard]] static QDateTime UTCDateTimeToNSDate(UTCDateTime utc);

    /// Dates before 1904 are 0, as is the null date.
    static void NSDateToUTCDateTime(const QDateTime &date, UTCDateTime *utcTime);

    /// Nothing when the item at @p path, links followed, cannot be examined.
    [[nodiscard]] static std::optional<struct stat> statsForFileAtPath(const QString &path);

    /// The bytes of a text up to its first U+0000.
    [[nodiscard]] static QByteArray nsToCString(const QString &text);

    [[nodiscard]] static bool isBigEndian();

    /// @}
    /// @name Children and sorting
    /// The visible list is the filtered one while isFiltered(), else all children.
    /// @{

    /// Why a folder that newFSOForLocalPath() made comes without its children; noErr where they are
    /// there, and for any other item.
    [[nodiscard]] OSStatus contentsError() const;

    [[nodiscard]] qsizetype totalItems() const { return visibleList().size(); }
    [[nodiscard]] qsizetype count() const { return totalItems(); }

    /// Null outside the list.
    [[nodiscard]] Ptr subitemAtIndex(qsizetype index) const { return visibleList().value(index); }
    [[nodiscard]] Ptr objectAtIndex(qsizetype index) const { return subitemAtIndex(index); }

    /// All of it, for a loop; hiding and sorting do not change what was handed out.
    [[nodiscard]] QList<Ptr> visibleItems() const { return visibleList(); }

    [[nodiscard]] bool isSorted() const { return sortAttribute() != MXSortAttributeNone; }
    [[nodiscard]] MXSortAttribute sortAttribute() const;
    [[nodiscard]] MXSortOrder sortOrder() const;

    /// Sorts the visible list, stably: least accessible, oldest and smallest first, names from Z to
    /// A; the reversed order turns all of that round, names from A to Z. An unknown attribute is
    /// remembered and changes no list.
    void setSortsByAttribute(MXSortAttribute attribute, MXSortOrder withOrder);

    // How this item compares with another: -1, 0 or 1. Names compare the other way round, and
    // without regard to case; of sizes a folder's is 0.
    [[nodiscard]] int _sortByPermissions(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortByDate(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortByName(const MXFileSystemObject &other) const;
    [[nodiscard]] int _sortBySize(const MXFileSystemObject &other) const;

    /// The elements in reverse order.
    [[nodiscard]] static QList<Ptr> _swapArray(const QList<Ptr> &items);

    /// @}
    /// @name Filtering
    /// Hiding is membership of the folder's filtered list. The host calls invalidateFilteredItems()
    /// on the folder, hides children, then calls setIsFiltered(true).
    /// @{

    /// Makes the objects of all children from the record, files before folders, and identifies the
    /// local ones. The filtered list is then empty.
    void performAssimilation();

    /// The object of a child by its place among files and, behind them, folders. Null outside.
    [[nodiscard]] Ptr child_fso_at_index(int32_t index) const;

    /// 0xFFFFFFFF without a record.
    [[nodiscard]] uint32_t _subdirectoryCount() const;
    [[nodiscard]] uint32_t _fileCount() const;

    /// Not filtered, and every child in the filtered list again.
    void invalidateFilteredItems();

    /// Takes @p child out of the filtered list.
    void hideItem(const Ptr &child);

    /// Takes the item out of its parent's filtered list, whatever the argument is.
    void setIsHidden(bool hidden);

    /// Always false.
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): of an item, as the others
    [[nodiscard]] bool isHidden() const { return false; }

    [[nodiscard]] bool isFiltered() const;
    void setIsFiltered(bool filtered);

    /// How many children are not in the filtered list.
    [[nodiscard]] int32_t filteredItemCount() const;

    /// @}
    /// @name Identification
    /// @{

    /// Finds out the kind of the item at the path as it is now. Creation does so for the item and
    /// its local children.
    void identify();

    [[nodiscard]] MXItemKind fsoKind() const { return kind_; }

    /// Of a link or alias: folder, file, or unknown for any other node and for what would have to
    /// be searched for.
    [[nodiscard]] MXItemKind aliasOrLinkTargetKind() const { return targetKind_; }

    /// Where a link points, with the folder that it is in before a relative path and one leading
    /// "../" folded; where an alias leads, its own path for one that leads nowhere. Null for
    /// anything else. A link that is gone gives its folder with "/" behind it.
    [[nodiscard]] QString aliasOrLinkTargetPath() const;

    /// Whether aliasOrLinkTargetPath() is null: also for what is neither link nor alias.
    [[nodiscard]] bool aliasOrLinkTargetIsInvalid() const;

    /// What people call an item of this kind, in their language; "Remote File" for a remote one.
    [[nodiscard]] QString kindAsString() const;

    // The kind; of remote items only isDir, isFolder, isLink and isFile can be true. Packages,
    // application bundles and volumes are directories, too. An alias is no file.
    [[nodiscard]] bool isPackage() const { return isLocalKind(MXItemKindPackage); }
    [[nodiscard]] bool isVolume() const { return isLocalKind(MXItemKindVolume); }
    [[nodiscard]] bool isApplication() const { return isLocalKind(MXItemKindApplication); }
    [[nodiscard]] bool isAlias() const { return isLocalKind(MXItemKindAlias); }
    [[nodiscard]] bool isPackagedApplication() const;
    [[nodiscard]] bool isDir() const;
    [[nodiscard]] bool isFolder() const { return isDir(); }
    [[nodiscard]] bool isLink() const;
    [[nodiscard]] bool isFile() const;

    /// Whether the record is of a symbolic link, broken or not. A broken one, whose target is
    /// missing or could not be examined, is of unknown kind, so that isLink() is false.
    [[nodiscard]] bool isSymbolicLink() const { return mfs_fso_isLink(record_) != 0; }
    [[nodiscard]] bool isBrokenLink() const {
        return isSymbolicLink() && record_->target_type == MFS_TARGET_UNKNOWN;
    }

    [[nodiscard]] bool isApplicationPackaged() const { return isApplicationPackaged_; }
    void setApplicationIsPackaged(bool packaged) { isApplicationPackaged_ = packaged; }

    /// Whether it is a file with the extension of an image that can be read here; decided once.
    [[nodiscard]] bool isGraphicFile() const;

    /// Whether file managers are asked to hide the item, as it is now.
    [[nodiscard]] bool isInvisible() const;

    /// Whether the file, or the executable of a packaged application, begins with "Joy!", as code
    /// fragments do.
    [[nodiscard]] bool isCarbonApplication() const;

    /// The kind of the item at @p path as it is now. @p typeWePointTo is written for a link or
    /// alias alone, @p isPackaged (true for an application bundle) when there is something at the
    /// path. Both may be null.
    [[nodiscard]] static MXItemKind typeForItemAtPath(const QString &path,
                                                      MXItemKind *typeWePointTo, bool *isPackaged);

    /// Where the alias file at @p path leads, chains followed; @p path itself when it is none, or
    /// leads nowhere. Null for null.
    [[nodiscard]] static QString resolveAliasFromFileAtPath(const QString &path);
    [[nodiscard]] static QString private_resolveAliasPath(const QString &path);
    [[nodiscard]] static QString resolveAliasPath(const QString &path) {
        return private_resolveAliasPath(path);
    }

    /// @}
    /// @name Size
    /// An item that is measured may be told to stop from another thread, with
    /// cancelFolderSizeCalulation() alone.
    /// @{

    /// What the item takes with all that is in it: of a folder, package or application bundle the
    /// sums over everything below, each link with its own length and unfollowed; of a remote item
    /// what its record says. Measured once and kept, also when it was cancelled; of a volume what
    /// its file system tells at each call. Null, with lines in the log, where getLocalFileSize() or
    /// getVolumeInformation() is; a folder that is gone or closed has nothing in it.
    [[nodiscard]] MXFileSystemObjectSize::Ptr
    sizeObject(const MXSizeProgressCallback &progress = {}) const;
    void invalidateCachedSize();

    /// Measures in another way, or to learn more. Nothing is kept. Nothing where sizeObject() is
    /// null.
    [[nodiscard]] std::optional<MXSizeMeasurement>
    measureSize(const MXSizeOptions &options = {}) const;

    /// Ends the measurement that runs, and every later one of this item after a single entry. Any
    /// thread, and signal handlers.
    void cancelFolderSizeCalulation() {
        myCancelFolderSizeCalc_.store(true, std::memory_order_relaxed);
    }
    [[nodiscard]] bool folderSizeCalulationCancelled() const {
        return myCancelFolderSizeCalc_.load(std::memory_order_relaxed);
    }

    /// The forks of the item itself, without the physical total; of a link its length. Nothing,
    /// with lines in the log, when it is gone or a fork cannot be read.
    [[nodiscard]] std::optional<MXFSOSizeRecord> getLocalFileSize() const;

    /// Capacity, free space and used inodes (as files) of the volume that holds the item. Nothing
    /// on failure, with lines in the log when the item is gone.
    [[nodiscard]] std::optional<MXFSOSizeRecord> getVolumeInformation() const;

    /// The total size, or the used space of a volume, as format_size() has it. Null from the first
    /// call, which measures; the same text, never made anew, from later ones. The marker where
    /// sizeObject() is null.
    [[nodiscard]] OrMarker<QString> totalSizeFormattedAsString() const;

    /// @}

protected:
    MXFileSystemObject();

    /// A new object of the receiver's class. A class derived from this one overrides it: the
    /// objects of children and parents are made by it (docs/examples/checksums).
    [[nodiscard]] virtual Ptr alloc() const;

    /// What knows the item's address; null for none. Here: its "file:" URL.
    [[nodiscard]] virtual std::unique_ptr<MXURLObject> urlObject() const;

    /// Hears of a failure that isLocked() met. Here: logs it.
    virtual void recordCarbonError(OSStatus error) const;

private:
    struct Contents;
    struct RareTexts;
    using Tree = QExplicitlySharedDataPointer<ListedTree>;
    enum class Messages { Logged, None };

    static Ptr newForLocalPath(const QString &path, bool assimilatingContents, Messages messages,
                               OSStatus *error, const MXFileSystemObject *prototype);
    static Ptr wrap(mfs_fso *record, const Tree &tree, const MXFileSystemObject *prototype);
    static void release(QList<Ptr> children);

    [[nodiscard]] RareTexts &rareTexts() const;
    Contents &contents();
    void assimilate(const ListedKinds *kinds);
    void makeChildren(const ListedKinds *kinds);
    void identifyAs(const Classification &classification);
    [[nodiscard]] bool hasPathOfHost() const;
    [[nodiscard]] QByteArrayView recordName() const;
    [[nodiscard]] bool isListedChild() const { return tree_ && mfs_fso_parent(record_); }
    [[nodiscard]] QByteArray nameBytes() const;
    [[nodiscard]] uint64_t sizeForSorting() const;
    [[nodiscard]] MXFSOSizeRecord remoteSize() const;
    [[nodiscard]] bool hasSizeOfItsOwn() const;
    void takeOutHidden() const;
    [[nodiscard]] const QList<Ptr> &visibleList() const;
    [[nodiscard]] bool isLocalKind(MXItemKind kind) const { return kind_ == kind && !isRemote(); }
    [[nodiscard]] QByteArray representation() const;
    [[nodiscard]] std::optional<FSCatalogInfo> catalogInfo(FSCatalogInfoBitmap whichInfo,
                                                           OSStatus *status = nullptr) const;
    [[nodiscard]] bool isThere() const;

    mfs_fso *record_ = nullptr;
    Tree tree_;                             ///< null for a record of the host's
    mutable MXPermission::Ptr permissions_; ///< made at first use
    mutable QString date_;                  ///< made at first use
    std::unique_ptr<Contents> contents_;    ///< made when a folder is filled, filtered or sorted
    mutable std::unique_ptr<RareTexts> rareTexts_; ///< made when there is one
    mutable MXFileSystemObjectSize::Ptr cachedSizeObject_;
    MXItemKind kind_ = MXItemKindUnknown;
    MXItemKind targetKind_ = MXItemKindUnknown;
    mutable int8_t detectedTypeGraphic_ = 0; ///< 1 graphic, 2 not, 0 not decided
    bool isApplicationPackaged_ = false;
    std::atomic<bool> myCancelFolderSizeCalc_ = false; ///< never back again
};

} // namespace MWCore
