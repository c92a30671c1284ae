// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringView>

namespace MWCore {

/// The elements of a drawing and the references between them, which can make it infinitely or
/// exponentially larger than it looks, and what it takes to draw them.
class SvgReferences {
public:
    /// Adds an element within the innermost element that has not ended.
    void start();
    void end();

    /// Names the innermost element. False if the name is taken.
    bool setId(const QString &id);

    /// Adds what the value of an attribute of the innermost element refers to: "#id", or "url(#id)"
    /// any number of times.
    void addReferences(QStringView value);

    /// Adds to what it takes to draw the innermost element an attribute with @p value, which may
    /// be a path of any length or divide the outlines of all elements within into dashes.
    void addCost(QStringView name, QStringView value);

    /// Adds a text within the innermost element.
    void addText(QStringView text);

    /// Counts the dashes and strokes of a style sheet, which may be those of any element.
    void addStyle(QStringView text);

    /// The elements that are drawn with every reference replaced by what it refers to, and how
    /// deeply they are nested, stay below the limits.
    [[nodiscard]] bool areWithinLimits();

    /// At most the length of all outlines, in user units of the drawing. After areWithinLimits().
    [[nodiscard]] double length() const { return elements_.front().length; }

    /// What it takes to draw all elements, in the time for one. After areWithinLimits().
    [[nodiscard]] int64_t cost() const { return elements_.front().count; }

    [[nodiscard]] std::size_t depth() const { return open_.size(); }
    [[nodiscard]] int64_t count() const { return static_cast<int64_t>(elements_.size()); }

private:
    struct Element {
        std::vector<std::size_t> children;
        std::vector<QString> references;
        enum { New, Open, Done } state = New;
        int64_t characters = 0; ///< of its attributes
        bool isDashed = false;
        double length = 0; ///< of its outline, and in the end of all those in it
        double scale = 1;  ///< by which it is enlarged
        double width = 0;  ///< of strokes, or height of texts, in it
        int64_t count = 1; ///< of itself and everything in it, weighted by what drawing it takes
        int height = 1;    ///< how deeply that is nested
    };

    bool measure(std::size_t index, int depth);
    bool addContents(Element &element, int depth);
    bool add(Element &element, std::size_t other, int depth);

    std::vector<Element> elements_;
    std::vector<std::size_t> open_;
    QHash<QString, std::size_t> ids_;
};

} // namespace MWCore
