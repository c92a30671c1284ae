// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXLabelManager.h"

#include "platform/workspace/FileLabels.h"

#include <algorithm>

namespace MWCore {
namespace {

constexpr int16_t kDisplayOrder[] = {0, 6, 7, 5, 2, 4, 3, 1};

} // namespace

MXLabelManager::Ptr MXLabelManager::sharedLabelManager() {
    static const auto *const shared = new Ptr(init()); // never freed
    return *shared;
}

MXLabelManager::Ptr MXLabelManager::init() {
    return Ptr(new MXLabelManager);
}

void MXLabelManager::_loadSystemLabels() {
    const QStringList names = fileLabels();
    const QList<QColor> colors = fileLabelColors();
    QList<MXLabel::Ptr> labels;
    for (const int16_t number : kDisplayOrder)
        labels += MXLabel::initWithName(names[number], colors[number], number);
    setLabelArray(labels);
}

MXLabel::Ptr MXLabelManager::labelWithID(uint16_t number) const {
    const auto label = std::ranges::find_if(
        labelArray_, [number](const MXLabel::Ptr &each) { return each->id() == number; });
    return label == labelArray_.end() ? MXLabel::Ptr() : *label;
}

} // namespace MWCore
