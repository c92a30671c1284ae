// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXLabel.h"

#include <QList>

namespace MWCore {

/// The table of all labels in menu order: none, red, orange, yellow, green, blue, purple, gray.
/// Reference-counted; one thread at a time.
class MWCORE_EXPORT MXLabelManager : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXLabelManager>;

    /// The process's manager, made at the first call and never freed.
    [[nodiscard]] static Ptr sharedLabelManager();

    /// A new manager with the current labels.
    [[nodiscard]] static Ptr init();

    /// Reads names and colours again. Users can change them; the table is not updated otherwise.
    void _loadSystemLabels();

    [[nodiscard]] QList<MXLabel::Ptr> labelArray() const { return labelArray_; }
    void setLabelArray(const QList<MXLabel::Ptr> &labels) { labelArray_ = labels; }

    /// The first label of the table: number 0 unless the host changed the table. Null if the table
    /// is empty.
    [[nodiscard]] MXLabel::Ptr noneLabel() const { return labelArray_.value(0); }

    /// The first label with the number, or null.
    [[nodiscard]] MXLabel::Ptr labelWithID(uint16_t number) const;

private:
    MXLabelManager() { _loadSystemLabels(); }

    QList<MXLabel::Ptr> labelArray_;
};

} // namespace MWCore
