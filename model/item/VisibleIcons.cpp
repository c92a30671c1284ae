// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/VisibleIcons.h"

#include "model/item/IconKind.h"

#include <algorithm>
#include <utility>

namespace MWCore {
namespace {

using Kind = ItemIconFacts::Kind;

/// Memory may suffice the next time; a missing plug-in stays missing.
constexpr int kMostTries = 3;

constexpr std::array kPlaceholderKinds = {Kind::File, Kind::Folder, Kind::Link};

/// The index of the placeholder for items of @p kind.
std::size_t placeholderFor(Kind kind) {
    const auto *const found = std::ranges::find(kPlaceholderKinds, kind);
    return found == kPlaceholderKinds.end()
               ? 0
               : static_cast<std::size_t>(found - kPlaceholderKinds.begin());
}

/// The extension that identifies the type of a file; empty for other items.
QString extensionOf(const MXFileSystemObject &item) {
    return item.isLocal() && item.isFile() ? item.extensionReal().toLower() : QString();
}

} // namespace

VisibleIcons::VisibleIcons() {
    renewTickets();
}

/// Everything is missing from now on.
void VisibleIcons::renewTickets() {
    for (auto &[item, entry] : entries_) {
        entry.missing = newTicket();
        entry.failures = 0;
    }
    for (Placeholder &each : placeholders_)
        each.missing = newTicket();
}

bool VisibleIcons::setSize(int points, qreal scale) {
    if (points == points_ && scale == scale_)
        return false;
    points_ = points;
    scale_ = scale;
    for (auto &[item, entry] : entries_)
        entry.image.reset();
    for (Placeholder &each : placeholders_)
        each.image.reset();
    renewTickets();
    return true;
}

void VisibleIcons::setItems(const Items &visible, const Items &likelyNext) {
    Entries before = std::exchange(entries_, {});
    order_.clear();
    add(visible, Shown::Now, before);
    add(likelyNext, Shown::Next, before);
}

void VisibleIcons::add(const Items &items, Shown shown, Entries &before) {
    for (const MXFileSystemObject::Ptr &item : items) {
        if (!item || entries_.contains(item.data()))
            continue;
        const auto known = before.find(item.data());
        entries_.emplace(item.data(),
                         entryFor(item, shown, known == before.end() ? nullptr : &known->second));
        order_.push_back(item.data());
    }
}

VisibleIcons::Entry VisibleIcons::entryFor(const MXFileSystemObject::Ptr &item, Shown shown,
                                           const Entry *before) {
    if (before && before->shown == Shown::Now && shown == Shown::Now)
        return triedAgain(*before);
    const ItemIcon::Ptr icon = item->keptIcon();
    HeldIconImage image = icon ? cached(*icon) : nullptr;
    Entry entry;
    entry.item = item;
    entry.shown = shown;
    if (!image)
        entry.missing = before && before->shown == shown && before->missing != 0 ? before->missing
                                                                                 : newTicket();
    if (shown == Shown::Now)
        entry.image = std::move(image);
    return entry;
}

VisibleIcons::Entry VisibleIcons::triedAgain(Entry entry) {
    if (entry.missing == 0 && entry.failures > 0 && entry.failures < kMostTries)
        entry.missing = newTicket();
    return entry;
}

void VisibleIcons::forget(const MXFileSystemObject &item) {
    item.keepIcon({});
    if (const auto entry = entries_.find(&item); entry != entries_.end()) {
        entry->second.missing = newTicket();
        entry->second.failures = 0;
    }
}

void VisibleIcons::checkTheme(IconRequest::ThemeCheck check) {
    placeholders_.front().missing = newTicket();
    placeholders_.front().themeCheck = check;
}

HeldIconImage VisibleIcons::cached(const ItemIcon &icon) const {
    return icon.heldCachedImage(points_, scale_, theme_.theme);
}

QImage VisibleIcons::image(const MXFileSystemObject &item) const {
    const auto entry = entries_.find(&item);
    if (entry != entries_.end() && entry->second.image)
        return *entry->second.image;
    const ItemIcon::Ptr icon = item.keptIcon();
    const HeldIconImage image = icon ? cached(*icon) : nullptr;
    return image ? *image : placeholder(item);
}

QImage VisibleIcons::placeholder(const MXFileSystemObject &item) const {
    const ItemIcon::Ptr type = types_.find(extensionOf(item));
    if (const HeldIconImage image = type ? cached(*type) : nullptr)
        return *image;
    const Kind kind = iconKindOf(item);
    HeldIconImage &generic = placeholders_.at(placeholderFor(kind)).image;
    if (!generic)
        generic = drawnGenericIcon(kind)->heldImage(points_, scale_, nullptr);
    return generic ? *generic : QImage();
}

std::vector<IconRequest> VisibleIcons::missing() {
    std::vector<IconRequest> requests;
    tickets_.clear();
    addMissing(Shown::Now, requests);
    for (std::size_t at = 0; at < placeholders_.size(); ++at)
        if (placeholders_.at(at).missing != 0) {
            requests.push_back(request(placeholders_.at(at).missing));
            requests.back().item.kind = kPlaceholderKinds.at(at);
            requests.back().themeCheck = placeholders_.at(at).themeCheck;
        }
    addMissing(Shown::Next, requests);
    return requests;
}

void VisibleIcons::addMissing(Shown shown, std::vector<IconRequest> &requests) {
    std::size_t left = shown == Shown::Now ? order_.size() : mostDrawnAhead();
    for (const MXFileSystemObject *const item : order_) {
        const Entry &entry = entries_.at(item);
        if (entry.shown != shown)
            continue;
        const bool isDrawn = left > 0;
        left -= isDrawn ? 1 : 0;
        if (entry.missing == 0 || (!isDrawn && item->keptIcon()))
            continue;
        IconRequest &added = requests.emplace_back(request(entry.missing));
        added.item = item->iconFacts();
        added.icon = item->keptIcon();
        added.extent = isDrawn ? IconRequest::Extent::FindAndDraw : IconRequest::Extent::Find;
        tickets_.emplace(entry.missing, item);
    }
}

/// As many images as fit into half of the cache, so that they are still there when they are needed.
std::size_t VisibleIcons::mostDrawnAhead() const {
    constexpr qreal kBytesPerPixel = 4;
    const qreal pixels = std::max(qreal(1), points_ * scale_);
    return static_cast<std::size_t>(qreal(std::max<int64_t>(ItemIcon::cacheLimit(), 0)) / 2 /
                                    (pixels * pixels * kBytesPerPixel));
}

IconRequest VisibleIcons::request(uint64_t ticket) const {
    IconRequest request;
    request.ticket = ticket;
    request.points = points_;
    request.scale = scale_;
    return request;
}

VisibleIcons::Changes VisibleIcons::apply(const std::vector<IconResult> &results) {
    Changes changes;
    for (const IconResult &result : results)
        apply(result, changes);
    return changes;
}

/// Null if the result of this ticket is not wanted any more.
VisibleIcons::Entry *VisibleIcons::entryWith(uint64_t ticket) {
    const auto item = tickets_.find(ticket);
    const auto entry = item == tickets_.end() ? entries_.end() : entries_.find(item->second);
    return entry == entries_.end() || entry->second.missing != ticket ? nullptr : &entry->second;
}

void VisibleIcons::apply(const IconResult &result, Changes &changes) {
    if (adoptTheme(result.theme))
        changes.isThemeNew = changes.needRequests = true;
    const bool isOutdated = result.icon && result.theme.number < theme_.number;
    for (Placeholder &each : placeholders_)
        if (each.missing == result.ticket)
            each = {.image = result.image ? result.image : each.image,
                    .missing = isOutdated ? newTicket() : 0,
                    .themeCheck = {}};
    if (Entry *const entry = entryWith(result.ticket)) {
        entry->missing = isOutdated ? newTicket() : 0;
        applyTo(*entry, result, changes);
    }
    changes.needRequests = changes.needRequests || isOutdated;
}

void VisibleIcons::applyTo(Entry &entry, const IconResult &result, Changes &changes) {
    if (result.icon) {
        entry.item->keepIcon(result.icon);
        types_.learn(extensionOf(*entry.item), *result.icon);
    }
    if (!result.image) {
        entry.failures += entry.shown == Shown::Now ? 1 : 0;
        return;
    }
    entry.failures = 0;
    if (!entry.image || entry.image->cacheKey() != result.image->cacheKey())
        changes.items += entry.item;
    if (entry.shown == Shown::Now)
        entry.image = result.image;
}

/// Returns whether the theme has changed since another one was known.
bool VisibleIcons::adoptTheme(const NumberedTheme &theme) {
    if (theme.number <= theme_.number)
        return false;
    const NumberedTheme before = std::exchange(theme_, theme);
    if (!before.theme)
        return false;
    renewTickets();
    return true;
}

} // namespace MWCore
