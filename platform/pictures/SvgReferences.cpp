// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/SvgReferences.h"

#include "platform/pictures/SvgExtent.h"

#include <algorithm>

namespace MWCore {
namespace {

constexpr int64_t kMostElements = 200'000;
constexpr int kDeepest = 256;
constexpr int64_t kCharactersPerElement = 16;  ///< of a path that takes as long as an element
constexpr int64_t kElementsPerDashedOne = 500; ///< Qt divides an outline into up to 10,000 dashes

/// Each of them is an outline.
constexpr int64_t kElementsPerText = 4;

/// Each element, and 16 characters of a path, can add corners, each as long as several widths.
constexpr double kWidthsPerElement = 64;

constexpr QStringView kOutlines[] = {u"d",  u"points", u"r",  u"rx",    u"ry",    u"x1",
                                     u"x2", u"y1",     u"y2", u"width", u"height"};
constexpr QStringView kWidths[] = {u"font", u"font-size", u"stroke-width", u"stroke-miterlimit"};

/// Whether an attribute or a style sheet asks for dashes. Drawing programs often write that there
/// are none. A backslash may hide the word.
bool hasDashes(QStringView text) {
    constexpr QStringView kDashes = u"dasharray";
    for (qsizetype at = text.indexOf(kDashes); at >= 0; at = text.indexOf(kDashes, at)) {
        at += kDashes.size();
        QStringView rest = text.sliced(at).trimmed();
        rest = rest.startsWith(u':') ? rest.sliced(1).trimmed() : rest;
        if (!rest.startsWith(u"none"))
            return true;
    }
    return text.contains(u'\\');
}

} // namespace

void SvgReferences::start() {
    if (!open_.empty())
        elements_[open_.back()].children.push_back(elements_.size());
    open_.push_back(elements_.size());
    elements_.emplace_back();
}

void SvgReferences::end() {
    open_.pop_back();
}

bool SvgReferences::setId(const QString &id) {
    if (ids_.contains(id))
        return false;
    ids_.insert(id, open_.back());
    return true;
}

void SvgReferences::addReferences(QStringView value) {
    const QStringView trimmed = value.trimmed();
    auto &references = elements_[open_.back()].references;
    if (trimmed.startsWith(u'#')) {
        references.push_back(trimmed.sliced(1).toString());
        return;
    }
    constexpr QStringView kUrl = u"url(";
    for (qsizetype at = value.indexOf(kUrl); at >= 0; at = value.indexOf(kUrl, at)) {
        at += kUrl.size();
        const qsizetype end = value.indexOf(u')', at);
        if (end < 0)
            return;
        QStringView target = value.sliced(at, end - at).trimmed();
        at = end;
        while (target.startsWith(u'\'') || target.startsWith(u'"') || target.startsWith(u'#'))
            target = target.sliced(1);
        while (target.endsWith(u'\'') || target.endsWith(u'"'))
            target.chop(1);
        references.push_back(target.toString());
    }
}

void SvgReferences::addCost(QStringView name, QStringView value) {
    Element &element = elements_[open_.back()];
    element.characters += value.size();
    if (name == u"stroke-dasharray")
        element.isDashed |= value.trimmed() != u"none";
    else if (name == u"style")
        element.isDashed |= hasDashes(value);
    if (name == u"transform" || name == u"style")
        element.scale *= largestScale(value);
    if (name == u"style")
        element.width = std::max(element.width, largestWidth(value));
    else if (std::ranges::find(kWidths, name) != std::end(kWidths))
        element.width = std::max(element.width, largestNumber(value));
    if (std::ranges::find(kOutlines, name) != std::end(kOutlines))
        element.length += longestOutline(value);
}

void SvgReferences::addText(QStringView text) {
    elements_[open_.back()].count += kElementsPerText * text.trimmed().size();
}

void SvgReferences::addStyle(QStringView text) {
    Element &all = elements_.front();
    all.isDashed |= hasDashes(text);
    all.scale *= std::max(1.0, largestScale(text));
    all.width = std::max(all.width, largestWidth(text));
}

bool SvgReferences::areWithinLimits() {
    return !elements_.empty() && measure(0, 1);
}

/// False if a limit is reached or the element contains itself.
bool SvgReferences::measure(std::size_t index, int depth) {
    Element &element = elements_[index];
    if (element.state == Element::Done)
        return depth + element.height <= kDeepest;
    if (element.state == Element::Open || depth > kDeepest)
        return false;
    element.state = Element::Open;
    element.count += element.characters / kCharactersPerElement;
    if (!addContents(element, depth))
        return false;
    element.count *= element.isDashed ? kElementsPerDashedOne : 1;
    element.length += element.width * kWidthsPerElement * static_cast<double>(element.count);
    element.length *= element.scale;
    element.state = Element::Done;
    return element.count <= kMostElements;
}

bool SvgReferences::addContents(Element &element, int depth) {
    for (const std::size_t child : element.children)
        if (!add(element, child, depth))
            return false;
    for (const QString &id : element.references)
        if (const auto target = ids_.constFind(id); target != ids_.constEnd())
            if (!add(element, *target, depth))
                return false;
    return element.count <= kMostElements;
}

/// Adds to @p element what @p other, within it, amounts to.
bool SvgReferences::add(Element &element, std::size_t other, int depth) {
    if (!measure(other, depth + 1))
        return false;
    element.count += elements_[other].count;
    element.length += elements_[other].length;
    element.height = std::max(element.height, elements_[other].height + 1);
    return element.count <= kMostElements;
}

} // namespace MWCore
