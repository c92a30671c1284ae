// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/PropertyList.h"
#include "platform/formats/PropertyListReaders.h"

#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <unordered_map>

#include <QDateTime>
#include <QtEndian>

namespace MWCore {
namespace {

/// The upper half of an object's first byte. The lower half is the count, or the exponent of the
/// size in bytes.
enum Marker : uint8_t {
    kBoolean = 0x0,
    kInteger = 0x1,
    kReal = 0x2,
    kDate = 0x3,
    kData = 0x4,
    kAscii = 0x5,
    kUtf16 = 0x6,
    kArray = 0xA,
    kDictionary = 0xD,
};
constexpr uint8_t kFalse = 0x8;
constexpr uint8_t kTrue = 0x9;
constexpr uint8_t kCountFollows = 0xF;

constexpr uint64_t kHeaderSize = 8;   // "bplist00"
constexpr uint64_t kTrailerSize = 32; // 6 unused bytes, two 1-byte sizes, three 64-bit numbers

/// How many values a list may have per byte of its size. A shared value counts at each reference.
constexpr uint64_t kValuesPerByte = 8;

/// A big-endian number of at most 8 bytes.
uint64_t numberOf(QByteArrayView bytes) {
    uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<uint8_t>(byte);
    return number;
}

/// Only 8-byte numbers can be negative; 16-byte numbers are for values above their range.
QVariant integerOf(QByteArrayView bytes) {
    if (bytes.size() <= 8)
        return static_cast<qlonglong>(numberOf(bytes));
    if (bytes.size() > 16 || numberOf(bytes.first(8)) != 0)
        return {};
    return static_cast<qulonglong>(numberOf(bytes.last(8)));
}

QVariant realOf(QByteArrayView bytes) {
    if (bytes.size() == 4)
        return static_cast<double>(std::bit_cast<float>(static_cast<uint32_t>(numberOf(bytes))));
    return bytes.size() == 8 ? QVariant(std::bit_cast<double>(numberOf(bytes))) : QVariant();
}

/// Seconds since 2001-01-01 00:00:00 UTC.
QVariant dateOf(QByteArrayView bytes) {
    constexpr double kReference = 978'307'200; // in Unix time
    constexpr double kFarthest = 1e12;         // 30,000 years
    const double seconds = bytes.size() == 8 ? std::bit_cast<double>(numberOf(bytes)) : kFarthest;
    if (!(std::abs(seconds) < kFarthest)) // NaN, too
        return {};
    return QDateTime::fromMSecsSinceEpoch(std::llround((seconds + kReference) * 1000), Qt::UTC);
}

QVariant dataOf(QByteArrayView bytes) {
    return bytes.toByteArray();
}

QVariant asciiOf(QByteArrayView bytes) {
    return stringWithFileSystemRepresentation(bytes);
}

QVariant utf16Of(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromBigEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text;
}

struct ScalarRow {
    Marker kind;
    QVariant (*make)(QByteArrayView bytes);
};
constexpr ScalarRow kScalarRows[] = {
    {kInteger, integerOf}, {kReal, realOf},   {kDate, dateOf},
    {kData, dataOf},       {kAscii, asciiOf}, {kUtf16, utf16Of},
};

/// Pairs the keys in the first half with the values in the second. nullopt if a key is not a
/// string.
std::optional<QVariantMap> dictionaryOf(const QVariantList &keysAndValues) {
    const qsizetype count = keysAndValues.size() / 2;
    QVariantMap dictionary;
    for (qsizetype index = 0; index < count; ++index) {
        const QVariant &key = keysAndValues[index];
        if (key.typeId() != QMetaType::QString)
            return std::nullopt;
        dictionary.insert(key.toString(), keysAndValues[count + index]);
    }
    return dictionary;
}

/// Reads a list from its top object down. An object with several references is read once and
/// shared. Objects of a valid list do not overlap, so the bytes read in total are limited to the
/// size of the list.
class BinaryReader {
public:
    explicit BinaryReader(QByteArrayView bytes) : bytes_(bytes) {}

    QVariant read();

private:
    struct Object {
        QVariant value;
        uint64_t values = 0; ///< at any depth, including itself; 0 while it is being read
        int height = 0;      ///< levels of nested containers, including itself
    };

    const Object *objectAt(uint64_t index, int depth);
    bool readObject(uint64_t offset, int depth, Object *object);
    bool readContainer(uint8_t kind, QByteArrayView references, int depth, Object *container);
    std::optional<uint64_t> takeSize(uint64_t *position, uint8_t kind, uint8_t nibble);
    std::optional<QByteArrayView> take(uint64_t *position, uint64_t size);
    [[nodiscard]] QByteArrayView part(uint64_t from, uint64_t size) const {
        return bytes_.sliced(static_cast<qsizetype>(from), static_cast<qsizetype>(size));
    }

    QByteArrayView bytes_;
    uint64_t objectsEnd_ = 0; ///< where the table of object offsets begins
    uint64_t objectCount_ = 0;
    uint8_t offsetSize_ = 0;
    uint8_t referenceSize_ = 0;
    uint64_t bytesLeft_ = 0;
    std::unordered_map<uint64_t, Object> objects_; ///< by offset
};

QVariant BinaryReader::read() {
    const auto size = static_cast<uint64_t>(bytes_.size());
    if (size < kHeaderSize + kTrailerSize)
        return {};
    const QByteArrayView trailer = part(size - kTrailerSize, kTrailerSize);
    offsetSize_ = static_cast<uint8_t>(trailer[6]);
    referenceSize_ = static_cast<uint8_t>(trailer[7]);
    objectCount_ = numberOf(trailer.sliced(8, 8));
    objectsEnd_ = numberOf(trailer.sliced(24, 8));
    const auto isNumberSize = [](uint8_t bytes) { return bytes >= 1 && bytes <= 8; };
    if (!isNumberSize(offsetSize_) || !isNumberSize(referenceSize_) ||
        objectsEnd_ > size - kTrailerSize ||
        objectCount_ > (size - kTrailerSize - objectsEnd_) / offsetSize_)
        return {};
    bytesLeft_ = objectsEnd_;
    const Object *const top = objectAt(numberOf(trailer.sliced(16, 8)), 0);
    return top ? top->value : QVariant();
}

/// Null if the object is damaged or contains itself.
const BinaryReader::Object *BinaryReader::objectAt(uint64_t index, int depth) {
    if (index >= objectCount_)
        return nullptr;
    const uint64_t offset = numberOf(part(objectsEnd_ + index * offsetSize_, offsetSize_));
    const auto [entry, isNew] = objects_.try_emplace(offset);
    Object &object = entry->second; // stays valid when others are added
    if (isNew && !readObject(offset, depth, &object))
        return nullptr;
    if (object.values == 0 || depth + object.height > kPropertyListDepth)
        return nullptr;
    return &object;
}

bool BinaryReader::readObject(uint64_t offset, int depth, Object *object) {
    uint64_t position = offset;
    const auto marker = take(&position, 1);
    if (!marker || depth > kPropertyListDepth)
        return false;
    const uint8_t kind = static_cast<uint8_t>(marker->front()) >> 4;
    const uint8_t nibble = static_cast<uint8_t>(marker->front()) & 0xF;
    const auto size = takeSize(&position, kind, nibble);
    const auto content = size ? take(&position, *size) : std::nullopt;
    if (!content)
        return false;
    if (kind == kArray || kind == kDictionary)
        return readContainer(kind, *content, depth, object);
    const auto *const row = std::ranges::find(kScalarRows, kind, &ScalarRow::kind);
    if (row != std::end(kScalarRows))
        object->value = row->make(*content);
    else if (kind == kBoolean && (nibble == kFalse || nibble == kTrue))
        object->value = nibble == kTrue;
    object->values = object->value.isValid() ? 1 : 0;
    return object->value.isValid();
}

/// A dictionary has all keys before all values.
bool BinaryReader::readContainer(uint8_t kind, QByteArrayView references, int depth,
                                 Object *container) {
    QVariantList values;
    values.reserve(references.size() / referenceSize_);
    uint64_t count = 1;
    container->height = 1;
    for (; !references.isEmpty(); references = references.sliced(referenceSize_)) {
        const Object *const found = objectAt(numberOf(references.first(referenceSize_)), depth + 1);
        count += found ? found->values : 0;
        if (!found || count > kValuesPerByte * static_cast<uint64_t>(bytes_.size()))
            return false;
        container->height = std::max(container->height, found->height + 1);
        values += found->value;
    }
    if (kind == kArray) {
        container->value = values;
    } else {
        const auto dictionary = dictionaryOf(values);
        if (!dictionary)
            return false;
        container->value = *dictionary;
    }
    container->values = count;
    return true;
}

/// The size in bytes of an object's content, after its marker and count.
std::optional<uint64_t> BinaryReader::takeSize(uint64_t *position, uint8_t kind, uint8_t nibble) {
    if (kind == kBoolean)
        return 0;
    if (kind <= kDate)
        return uint64_t{1} << nibble;
    uint64_t count = nibble;
    if (nibble == kCountFollows) {
        const auto marker = take(position, 1);
        const uint8_t exponent = marker ? static_cast<uint8_t>(marker->front()) & 0xF : 0;
        const bool isInteger = marker && static_cast<uint8_t>(marker->front()) >> 4 == kInteger;
        const auto number =
            isInteger && exponent <= 3 ? take(position, uint64_t{1} << exponent) : std::nullopt;
        if (!number)
            return std::nullopt;
        count = numberOf(*number);
    }
    const auto unit = kind == kUtf16        ? 2
                      : kind == kArray      ? referenceSize_
                      : kind == kDictionary ? 2 * referenceSize_
                                            : 1;
    if (count > objectsEnd_) // otherwise the product could overflow
        return std::nullopt;
    return count * static_cast<uint64_t>(unit);
}

std::optional<QByteArrayView> BinaryReader::take(uint64_t *position, uint64_t size) {
    if (*position > objectsEnd_ || size > objectsEnd_ - *position || size > bytesLeft_)
        return std::nullopt;
    const QByteArrayView taken = part(*position, size);
    *position += size;
    bytesLeft_ -= size;
    return taken;
}

} // namespace

QVariant readBinaryPropertyList(QByteArrayView bytes) {
    return BinaryReader(bytes).read();
}

} // namespace MWCore
