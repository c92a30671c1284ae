// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/ItemIconProvider.h"

#include "model/icons/IconRequests.h"
#include "model/icons/IconWorkers.h"
#include "model/item/VisibleIcons.h"

#include <MWCore/IconTheme.h>

#include <utility>
#include <vector>

#include <QPointer>

namespace MWCore {

ItemIconProvider::ItemIconProvider(QObject *parent)
    : QObject(parent), icons_(std::make_unique<VisibleIcons>()),
      requests_(std::make_shared<IconRequests>(
          [this] { QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection); })) {
    IconWorkers::shared().add(requests_);
    themeChanges_ = MXNotificationCenter::defaultCenter()->addObserver(
        [requests = requests_](const MXNotification & /*change*/) { requests->reportTheme(); },
        IconTheme::kChanged);
}

ItemIconProvider::~ItemIconProvider() {
    IconWorkers::shared().remove(requests_); // the workers do not use `this` afterwards
}

void ItemIconProvider::setImageSize(int points, qreal scale) {
    if (icons_->setSize(points, scale))
        requestLater();
}

QImage ItemIconProvider::image(const MXFileSystemObject &item) const {
    return icons_->image(item);
}

void ItemIconProvider::setVisibleItems(const Items &visible, const Items &likelyNext) {
    icons_->setItems(visible, likelyNext);
    request();
}

void ItemIconProvider::forget(const MXFileSystemObject &item) {
    icons_->forget(item);
    requestLater();
}

void ItemIconProvider::checkTheme() {
    icons_->checkTheme(IconRequest::ThemeCheck::Now);
    requestLater();
}

void ItemIconProvider::request() {
    isRequestPending_ = false;
    std::vector<IconRequest> missing = icons_->missing();
    const bool hasWork = !missing.empty();
    requests_->replace(std::move(missing));
    if (hasWork)
        IconWorkers::shared().wake();
}

/// Many changes in one turn of the event loop make one list.
void ItemIconProvider::requestLater() {
    if (!std::exchange(isRequestPending_, true))
        QMetaObject::invokeMethod(this, "request", Qt::QueuedConnection);
}

void ItemIconProvider::deliver() {
    const VisibleIcons::Changes changes = icons_->apply(requests_->collect());
    const bool isThemeReported = requests_->takeThemeReport();
    if (isThemeReported)
        icons_->checkTheme(IconRequest::ThemeCheck::Usual);
    if (isThemeReported || changes.needRequests)
        requestLater();
    const QPointer<ItemIconProvider> self(this); // a slot may destroy this object
    if (changes.isThemeNew)
        emit allImagesChanged();
    for (const MXFileSystemObject::Ptr &item : changes.items)
        if (self)
            emit imageChanged(item);
}

} // namespace MWCore
