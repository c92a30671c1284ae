// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>
#include <MWCore/MXFileSystemObject.h>
#include <MWCore/MXNotificationCenter.h>

#include <memory>

#include <QImage>
#include <QList>
#include <QObject>

namespace MWCore {

class IconRequests;
class VisibleIcons;

/// Icons for a view of thousands of items. The view says which items it shows, gets an image of
/// each at once, and is notified when a better one is there: workers find and draw the icons that
/// MXFileSystemObject::iconForFSOUsingCached() would choose, those of visible items first. Works
/// without a window system, in a thread with an event loop.
///
/// Icons are kept in the items, as iconForFSOUsingCached(true) does; images of visible items are
/// held, others are in the bounded cache of ItemIcon. A file system that never answers holds up
/// only the icons of its own items, and neither the destructor nor the end of the process.
///
/// The provider and its items belong to one thread. It keeps the items of the current lists alive.
/// It may be destroyed in a slot of its signals.
class MWCORE_EXPORT ItemIconProvider : public QObject {
    Q_OBJECT

public:
    using Items = QList<MXFileSystemObject::Ptr>;

    explicit ItemIconProvider(QObject *parent = nullptr);
    ItemIconProvider(const ItemIconProvider &) = delete;
    ItemIconProvider &operator=(const ItemIconProvider &) = delete;
    ~ItemIconProvider() override;

    /// Squares of @p points with @p scale pixels per point, from now on. 128 and 1 at first.
    void setImageSize(int points, qreal scale);

    /// The image of @p item in that size; if it is not known, that of files of its type or a
    /// generic one, with the badge of a link or alias. After forget() and after a change of the
    /// theme it is the previous one until the new one is drawn. Asks nothing of any file system.
    [[nodiscard]] QImage image(const MXFileSystemObject &item) const;

    /// Replaces the lists of items. First the icons of @p visible are found and drawn, the first of
    /// them first; then those of @p likelyNext are found, and drawn as long as they fit into half
    /// of the cache. Nothing is begun any more for items that are in neither list. An icon that
    /// could not be drawn, as memory ran out, is tried again by the next two calls.
    void setVisibleItems(const Items &visible, const Items &likelyNext = {});

    /// To be called when @p item has changed, also with an item that is in no list.
    void forget(const MXFileSystemObject &item);

    /// Finds out whether the user's theme has changed on the disk, for example when a window
    /// becomes active or one of IconTheme::watchedFolders() has changed. IconTheme::kChanged and
    /// any work on icons are heeded anyway; an idle provider uses no time.
    void checkTheme();

signals:
    /// image() of an item in the lists has another result. One turn of the event loop reports all
    /// that are ready.
    void imageChanged(const MWCore::MXFileSystemObject::Ptr &item);

    /// The user's theme has changed. imageChanged() follows for the items in the lists; image() of
    /// others has another result now.
    void allImagesChanged();

private:
    Q_INVOKABLE void request();
    Q_INVOKABLE void deliver();
    void requestLater();

    std::unique_ptr<VisibleIcons> icons_;
    std::shared_ptr<IconRequests> requests_;
    MXNotificationCenter::Observation themeChanges_;
    bool isRequestPending_ = false;
};

} // namespace MWCore
