// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/icons/IconRequests.h"
#include "model/icons/NumberedTheme.h"
#include "model/icons/TypeIcons.h"
#include "model/item/MXFileSystemObject.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QImage>
#include <QList>

namespace MWCore {

/// The icons of the items in a provider's lists: their images, and what is missing. Belongs to the
/// provider's thread.
class VisibleIcons {
public:
    using Items = QList<MXFileSystemObject::Ptr>;

    VisibleIcons();

    /// Returns whether it is another size.
    bool setSize(int points, qreal scale);
    /// Also requests again what could not be drawn, a few times.
    void setItems(const Items &visible, const Items &likelyNext);
    void forget(const MXFileSystemObject &item);
    /// Requests an image, whose result says which theme is in use.
    void checkTheme(IconRequest::ThemeCheck check);

    [[nodiscard]] QImage image(const MXFileSystemObject &item) const;

    /// What is to be found and drawn, the most important first.
    [[nodiscard]] std::vector<IconRequest> missing();

    struct Changes {
        bool isThemeNew = false;
        bool needRequests = false; ///< missing() has more than before
        Items items;               ///< with another image
    };
    [[nodiscard]] Changes apply(const std::vector<IconResult> &results);

private:
    enum class Shown : uint8_t { Now, Next };
    struct Entry {
        MXFileSystemObject::Ptr item;
        Shown shown = Shown::Next;
        HeldIconImage image;  ///< of an item shown now; outdated if it is missing
        uint64_t missing = 0; ///< the ticket of the request; 0: nothing is missing
        int failures = 0;     ///< to draw an item shown now, since the last success
    };
    struct Placeholder {
        HeldIconImage image;
        uint64_t missing = 0;
        IconRequest::ThemeCheck themeCheck = IconRequest::ThemeCheck::Usual;
    };
    using Entries = std::unordered_map<const MXFileSystemObject *, Entry>;
    static constexpr std::size_t kPlaceholders = 3;

    [[nodiscard]] uint64_t newTicket() { return ++lastTicket_; }
    void renewTickets();
    void add(const Items &items, Shown shown, Entries &before);
    [[nodiscard]] Entry entryFor(const MXFileSystemObject::Ptr &item, Shown shown,
                                 const Entry *before);
    [[nodiscard]] Entry triedAgain(Entry entry);
    [[nodiscard]] HeldIconImage cached(const ItemIcon &icon) const;
    [[nodiscard]] QImage placeholder(const MXFileSystemObject &item) const;

    [[nodiscard]] IconRequest request(uint64_t ticket) const;
    void addMissing(Shown shown, std::vector<IconRequest> &requests);
    [[nodiscard]] std::size_t mostDrawnAhead() const;

    [[nodiscard]] Entry *entryWith(uint64_t ticket);
    void apply(const IconResult &result, Changes &changes);
    void applyTo(Entry &entry, const IconResult &result, Changes &changes);
    bool adoptTheme(const NumberedTheme &theme);

    int points_ = ItemIcon::kPoints;
    qreal scale_ = 1;
    NumberedTheme theme_ = lastKnownTheme();
    uint64_t lastTicket_ = 0;
    Entries entries_;
    std::vector<const MXFileSystemObject *> order_;                    ///< the most important first
    std::unordered_map<uint64_t, const MXFileSystemObject *> tickets_; ///< of what was requested
    mutable std::array<Placeholder, kPlaceholders> placeholders_;      ///< drawn when needed
    TypeIcons types_;
};

} // namespace MWCore
