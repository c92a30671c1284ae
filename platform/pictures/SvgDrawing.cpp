// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/SvgDrawing.h"

#include "platform/pictures/Png.h"
#include "platform/pictures/SvgExtent.h"
#include "platform/pictures/SvgReferences.h"

#include <algorithm>
#include <limits>
#include <vector>

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace MWCore {
namespace {

constexpr QStringView kSvg = u"http://www.w3.org/2000/svg";
constexpr QStringView kXlink = u"http://www.w3.org/1999/xlink";

// Others, such as scripts, animations and foreign objects, are left out with all they contain.
constexpr QStringView kDrawn[] = {
    u"a",        u"circle",         u"clipPath", u"defs",       u"ellipse", u"g",       u"image",
    u"line",     u"linearGradient", u"marker",   u"mask",       u"path",    u"pattern", u"polygon",
    u"polyline", u"radialGradient", u"rect",     u"solidColor", u"stop",    u"style",   u"svg",
    u"switch",   u"symbol",         u"use",
};
constexpr QStringView kTexts[] = {u"tbreak", u"text", u"textArea", u"tspan"};

/// The most ampersands in a drawing that declares entities: each reference to one can expand to
/// 4,096 characters.
constexpr qsizetype kMostEntityReferences = 4096;

/// Every element is compared with every rule of the style sheets.
constexpr int64_t kMostComparisons = 1 << 22;

/// Longer outlines take too long even in an image of one pixel.
constexpr double kLongest = 2e7;

bool isIn(QStringView name, const auto &names) {
    return std::ranges::find(names, name) != std::end(names);
}

/// The data of an embedded PNG or JPEG image, as a reference without what could be dangerous; empty
/// if it is something else or larger than @p pixels, from which its size is taken.
QString harmlessImage(QStringView reference, int64_t &pixels) {
    if (!reference.startsWith(u"data:", Qt::CaseInsensitive))
        return {};
    const qsizetype comma = reference.indexOf(u',');
    if (comma < 0 || !reference.first(comma).endsWith(u"base64"))
        return {};
    QByteArray bytes = QByteArray::fromBase64(reference.sliced(comma + 1).toLatin1());
    const char *const format = isPng(bytes) ? "png" : "jpeg";
    if (isPng(bytes))
        bytes = essentialPng(bytes, PngColour::Drop);
    else if (!bytes.startsWith("\xFF\xD8\xFF"))
        return {};
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    pixels -= int64_t{size.width()} * size.height();
    if (size.isEmpty() || pixels < 0)
        return {};
    return QStringLiteral("data:image/%1;base64,").arg(QLatin1String(format)) +
           QString::fromLatin1(bytes.toBase64());
}

/// The shorter side of the part of a drawing that is shown, in user units; 1 if it is not declared.
double shorterSide(const QXmlStreamAttributes &attributes) {
    std::vector<double> sides = numbersIn(attributes.value(QLatin1String("viewBox")));
    if (sides.size() == 4)
        return std::min(sides[2], sides[3]);
    sides = numbersIn(attributes.value(QLatin1String("width")));
    const std::vector<double> heights = numbersIn(attributes.value(QLatin1String("height")));
    sides.insert(sides.end(), heights.begin(), heights.end());
    return sides.empty() ? 1 : *std::ranges::min_element(sides);
}

/// The length in pixels, rounded as Qt does; 0 if it is not a plain number of them.
int pixelsIn(QStringView length) {
    if (length.endsWith(u"px"))
        length.chop(2);
    bool isNumber = false;
    const double pixels = length.toDouble(&isNumber);
    const bool isPlain = isNumber && pixels >= 1 && pixels <= std::numeric_limits<short>::max();
    return isPlain ? static_cast<int>(pixels) : 0;
}

/// The size that a drawing declares in pixels; empty if Qt has to find it.
QSize declaredSize(const QXmlStreamAttributes &attributes) {
    return {pixelsIn(attributes.value(QLatin1String("width"))),
            pixelsIn(attributes.value(QLatin1String("height")))};
}

/// Whether an element may have more than a thousand attributes, each of which the reader compares
/// with every other. "<" ends them, because attributes cannot contain it. UTF-16, in whose bytes
/// that could not be seen, counts as crowded.
bool hasCrowdedElement(QByteArrayView bytes) {
    constexpr int kMostQuotes = 2048;
    int quotes = 0;
    for (const char byte : bytes) {
        const bool isQuote = byte == '"' || byte == '\'';
        quotes = byte == '<' ? 0 : quotes + (isQuote ? 1 : 0);
        if (byte == '\0' || quotes > kMostQuotes)
            return true;
    }
    return false;
}

/// Copies a drawing without what harmlessSvg() leaves out.
class SvgCopy {
public:
    explicit SvgCopy(const QByteArray &bytes)
        : reader_(bytes), mayDeclareEntities_(bytes.count('&') <= kMostEntityReferences),
          writer_(&copy_), hasText_(hasSvgTexts()) {}

    std::optional<SvgDrawing> made();

private:
    void startElement();
    void endElement();
    void skipElement();
    [[nodiscard]] bool isDrawn(QStringView name, QStringView space) const;
    QString keptReference();
    void copyAttributes();
    void copyReference(const QString &reference);
    void copyCharacters(QStringView text);

    static constexpr std::size_t kDeepest = 256;
    QXmlStreamReader reader_;
    bool mayDeclareEntities_;
    QByteArray copy_;
    QXmlStreamWriter writer_;
    SvgReferences references_;
    bool hasText_;
    int64_t pixels_ = 1 << 22; ///< that embedded images can still have
    QSize size_;               ///< declared in pixels
    double shorterSide_ = 1;
    int64_t rules_ = 0; ///< the most that the style sheets can contain
};

std::optional<SvgDrawing> SvgCopy::made() {
    while (!reader_.atEnd()) {
        reader_.readNext();
        if (reader_.isStartElement())
            startElement();
        else if (reader_.isEndElement())
            endElement();
        else if (reader_.isCharacters() && references_.depth() > 0)
            copyCharacters(reader_.text());
        const bool mayExpand = reader_.isDTD() && !reader_.entityDeclarations().isEmpty();
        if (references_.depth() > kDeepest || (mayExpand && !mayDeclareEntities_))
            return std::nullopt;
    }
    const bool isQuick = rules_ * references_.count() <= kMostComparisons;
    if (reader_.hasError() || !isQuick || !references_.areWithinLimits())
        return std::nullopt;
    const double length = references_.length() / shorterSide_;
    if (!(length <= kLongest))
        return std::nullopt;
    return SvgDrawing{copy_, size_, references_.cost(), length};
}

bool SvgCopy::isDrawn(QStringView name, QStringView space) const {
    const bool isPlaced = references_.depth() > 0 || name == u"svg";
    return (space == kSvg || space.isEmpty()) && isPlaced &&
           (isIn(name, kDrawn) || (hasText_ && isIn(name, kTexts)));
}

void SvgCopy::startElement() {
    const QStringView name = reader_.name();
    const QString reference = isDrawn(name, reader_.namespaceUri()) ? keptReference() : QString();
    const bool isEmptyImage = name == u"image" && reference.isEmpty();
    if (!isDrawn(name, reader_.namespaceUri()) || isEmptyImage) {
        skipElement();
        return;
    }
    writer_.writeStartElement(name.toString());
    if (references_.depth() == 0) {
        writer_.writeDefaultNamespace(kSvg.toString());
        writer_.writeNamespace(kXlink.toString(), QStringLiteral("xlink"));
        size_ = declaredSize(reader_.attributes());
        shorterSide_ = shorterSide(reader_.attributes());
    }
    references_.start();
    copyAttributes();
    copyReference(reference);
}

/// The reader searches the namespaces of all the elements that are open for that of each new one.
void SvgCopy::skipElement() {
    std::size_t depth = references_.depth() + 1;
    while (depth > references_.depth() && !reader_.atEnd()) {
        reader_.readNext();
        if (reader_.isStartElement() && ++depth > kDeepest)
            reader_.raiseError();
        else if (reader_.isEndElement())
            --depth;
    }
}

void SvgCopy::endElement() {
    writer_.writeEndElement();
    references_.end();
}

/// The element's reference to another element, or its embedded image; empty if it has neither.
QString SvgCopy::keptReference() {
    const QXmlStreamAttributes attributes = reader_.attributes();
    const auto found = std::ranges::find(attributes, u"href",
                                         [](const auto &attribute) { return attribute.name(); });
    if (found == attributes.end())
        return {};
    if (reader_.name() == u"image")
        return harmlessImage(found->value(), pixels_);
    const QStringView reference = found->value().trimmed();
    return reference.startsWith(u'#') ? reference.toString() : QString();
}

void SvgCopy::copyAttributes() {
    for (const QXmlStreamAttribute &attribute : reader_.attributes()) {
        const QString name = attribute.name().toString();
        const QString value = attribute.value().toString();
        const bool isForeign = !attribute.namespaceUri().isEmpty() || name == u"href";
        if (isForeign || (name == u"id" && !references_.setId(value)))
            continue;
        references_.addReferences(value);
        references_.addCost(name, value);
        writer_.writeAttribute(name, value);
    }
}

void SvgCopy::copyReference(const QString &reference) {
    if (reference.isEmpty())
        return;
    if (reference.startsWith(u'#'))
        references_.addReferences(reference);
    writer_.writeAttribute(QStringLiteral("xlink:href"), reference);
}

void SvgCopy::copyCharacters(QStringView text) {
    rules_ += std::ranges::count_if(
        text, [](QChar character) { return character == u'{' || character == u','; });
    references_.addStyle(text);
    if (hasText_)
        references_.addText(text);
    writer_.writeCharacters(text.toString());
}

} // namespace

bool startsLikeSvg(QByteArrayView bytes) {
    constexpr qsizetype kByteOrderMark = 3;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes = bytes.sliced(kByteOrderMark);
    return bytes.startsWith("\x1F\x8B") || bytes.trimmed().startsWith('<');
}

bool hasSvgTexts() {
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance());
}

std::optional<SvgDrawing> harmlessSvg(const QByteArray &bytes) {
    if (hasCrowdedElement(bytes))
        return std::nullopt;
    return SvgCopy(bytes).made();
}

} // namespace MWCore
