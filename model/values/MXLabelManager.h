// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXLabel.h"

#include <QList>

namespace MWCore {

/// The table of all labels, in the order in which a menu shows them: none, red, orange, yellow,
/// green, blue, purple, gray. Reference-counted; one thread at a time.
class MWCORE_EXPORT MXLabelManager : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXLabelManager>;

    /// The one of the process, made on first use and never freed.
    [[nodiscard]] static Ptr sharedLabelManager();

    /// A manager with the labels as they are now.
    [[nodiscard]] static Ptr init();

    /// Reads names and colours again, which users can change; without it they stay as they were.
    void _loadSystemLabels();

    [[nodiscard]] QList<MXLabel::Ptr> labelArray() const { return labelArray_; }
    void setLabelArray(const QList<MXLabel::Ptr> &labels) { labelArray_ = labels; }

    /// The first label of the table: number 0 unless the host put another there. Null for an empty
    /// table.
    [[nodiscard]] MXLabel::Ptr noneLabel() const { return labelArray_.value(0); }

    /// The first label of that number in the table, or null.
    [[nodiscard]] MXLabel::Ptr labelWithID(uint16_t number) const;

private:
    MXLabelManager() { _loadSystemLabels(); }

    QList<MXLabel::Ptr> labelArray_;
};

} // namespace MWCore
