// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Jpeg2000.h"

#include "platform/pictures/Jpeg2000Header.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include <openjpeg.h>

namespace MWCore {
namespace {

template <auto function> struct Release {
    template <typename Object> void operator()(Object *object) const { function(object); }
};
using Codec = std::unique_ptr<opj_codec_t, Release<opj_destroy_codec>>;
using Stream = std::unique_ptr<opj_stream_t, Release<opj_stream_destroy>>;
using Decoded = std::unique_ptr<opj_image_t, Release<opj_image_destroy>>;

/// The bytes that the decoder reads, and its position.
struct Input {
    QByteArrayView bytes;
    qsizetype position = 0;

    [[nodiscard]] qsizetype rest() const { return bytes.size() - position; }
};

OPJ_SIZE_T readInput(void *buffer, OPJ_SIZE_T wanted, void *data) {
    auto *const input = static_cast<Input *>(data);
    const OPJ_SIZE_T count = std::min(wanted, static_cast<OPJ_SIZE_T>(input->rest()));
    if (count == 0)
        return static_cast<OPJ_SIZE_T>(-1);
    std::memcpy(buffer, input->bytes.data() + input->position, count);
    input->position += static_cast<qsizetype>(count);
    return count;
}

OPJ_OFF_T skipInput(OPJ_OFF_T wanted, void *data) {
    auto *const input = static_cast<Input *>(data);
    const OPJ_OFF_T count = std::clamp<OPJ_OFF_T>(wanted, -input->position, input->rest());
    input->position += count;
    return count == 0 && wanted != 0 ? -1 : count;
}

OPJ_BOOL seekInput(OPJ_OFF_T offset, void *data) {
    auto *const input = static_cast<Input *>(data);
    if (offset < 0 || offset > input->bytes.size())
        return OPJ_FALSE;
    input->position = offset;
    return OPJ_TRUE;
}

Stream streamOf(Input &input) {
    Stream stream(opj_stream_default_create(OPJ_TRUE));
    if (!stream)
        return stream;
    opj_stream_set_user_data(stream.get(), &input, nullptr);
    opj_stream_set_user_data_length(stream.get(), static_cast<OPJ_UINT64>(input.bytes.size()));
    opj_stream_set_read_function(stream.get(), readInput);
    opj_stream_set_skip_function(stream.get(), skipInput);
    opj_stream_set_seek_function(stream.get(), seekInput);
    return stream;
}

/// A decoder that reports nothing and decodes what there is of a truncated codestream.
Codec makeCodec() {
    Codec codec(opj_create_decompress(OPJ_CODEC_J2K));
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!codec || !opj_setup_decoder(codec.get(), &parameters))
        return {};
    const opj_msg_callback ignore = [](const char * /*message*/, void * /*data*/) {};
    opj_set_info_handler(codec.get(), ignore, nullptr);
    opj_set_warning_handler(codec.get(), ignore, nullptr);
    opj_set_error_handler(codec.get(), ignore, nullptr);
    opj_decoder_set_strict_mode(codec.get(), OPJ_FALSE);
    return codec;
}

/// Null if the codestream is damaged or memory runs out.
Decoded decoded(QByteArrayView codestream) {
    Input input = {codestream};
    const Stream stream = streamOf(input);
    const Codec codec = makeCodec();
    opj_image_t *read = nullptr;
    if (!stream || !codec || !opj_read_header(stream.get(), codec.get(), &read))
        return {};
    Decoded image(read);
    return opj_decode(codec.get(), stream.get(), image.get()) ? std::move(image) : Decoded();
}

/// One component as bytes, at the resolution of the image.
class Plane {
public:
    Plane(const opj_image_t &image, const opj_image_comp_t &component, int width)
        : component_(component), top_(image.y0),
          offset_(component.sgnd ? 1 << (component.prec - 1) : 0),
          most_((1 << component.prec) - 1) {
        for (int x = 0; x < width; ++x)
            columns_.push_back(index(image.x0, x, component.dx, component.x0, component.w));
    }

    /// Stores the samples of row @p y at @p target, @p step bytes apart.
    void copyRow(int y, uint8_t *target, int step) const {
        const OPJ_UINT32 row = index(top_, y, component_.dy, component_.y0, component_.h);
        const OPJ_INT32 *const values = component_.data + std::size_t{row} * component_.w;
        for (const OPJ_UINT32 column : columns_) {
            *target = byteOf(values[column]);
            target += step;
        }
    }

private:
    /// The sample at or before the pixel @p position of an image that starts at @p start.
    static OPJ_UINT32 index(OPJ_UINT32 start, int position, OPJ_UINT32 step, OPJ_UINT32 first,
                            OPJ_UINT32 count) {
        const OPJ_UINT32 sample = (start + static_cast<OPJ_UINT32>(position)) / step;
        return std::min(sample < first ? 0 : sample - first, count - 1);
    }

    [[nodiscard]] uint8_t byteOf(int value) const {
        constexpr int kMost = 255;
        // What a damaged codestream yields can be any number.
        const int sample = std::clamp(value, -offset_, most_ - offset_) + offset_;
        return static_cast<uint8_t>(most_ == kMost ? sample : (sample * kMost + most_ / 2) / most_);
    }

    const opj_image_comp_t &component_;
    std::vector<OPJ_UINT32> columns_; ///< of the samples of a row, by pixel
    OPJ_UINT32 top_;
    int offset_, most_;
};

/// ITU-R BT.601, full range.
void convertYcc(uint8_t *rgba) {
    const double y = rgba[0];
    const double blue = rgba[1] - 128.0;
    const double red = rgba[2] - 128.0;
    const std::array colour = {y + 1.402 * red, y - 0.344136 * blue - 0.714136 * red,
                               y + 1.772 * blue};
    for (const double value : colour)
        *rgba++ = static_cast<uint8_t>(std::clamp(value + 0.5, 0.0, 255.0));
}

bool isComplete(const opj_image_t &image, const Jpeg2000Header &header) {
    const auto isThere = [](const opj_image_comp_t &component) {
        return component.data && component.w > 0 && component.h > 0;
    };
    return image.numcomps == static_cast<OPJ_UINT32>(header.components) &&
           std::all_of(image.comps, image.comps + image.numcomps, isThere);
}

/// Codestreams with coarser colours than brightness hold YCC, whether the file says so or not.
bool isYcc(const opj_image_t &image, const Jpeg2000Header &header) {
    return image.numcomps >= 3 &&
           (header.isYcc || (image.comps[0].dx == 1 && image.comps[1].dx > 1));
}

void fill(QImage &made, const opj_image_t &image, bool convertsYcc) {
    constexpr int kPixelLength = 4; // bytes
    std::vector<Plane> planes;
    for (OPJ_UINT32 index = 0; index < image.numcomps; ++index)
        planes.emplace_back(image, image.comps[index], made.width());
    const bool isGray = planes.size() < 3;
    const bool hasAlpha = planes.size() % 2 == 0;
    made.fill(Qt::white); // opaque
    for (int y = 0; y < made.height(); ++y) {
        uint8_t *const row = made.scanLine(y);
        for (std::size_t channel = 0; channel < 3; ++channel)
            planes[isGray ? 0 : channel].copyRow(y, row + channel, kPixelLength);
        if (hasAlpha)
            planes.back().copyRow(y, row + 3, kPixelLength);
        if (convertsYcc)
            for (int x = 0; x < made.width(); ++x)
                convertYcc(row + qsizetype{kPixelLength} * x);
    }
}

} // namespace

bool isJpeg2000(QByteArrayView bytes) {
    return startsLikeJpeg2000(bytes);
}

std::optional<QSize> jpeg2000Size(QByteArrayView bytes) {
    const auto header = jpeg2000Header(bytes);
    return header ? std::optional(header->size) : std::nullopt;
}

std::optional<QImage> decodeJpeg2000(QByteArrayView bytes, QSize size) {
    const auto header = jpeg2000Header(bytes);
    if (!header || header->size != size)
        return std::nullopt;
    const auto codestream = boundedCodestream(*header);
    const Decoded image = codestream ? decoded(*codestream) : Decoded();
    if (!image || !isComplete(*image, *header))
        return std::nullopt;
    QImage made(size, QImage::Format_RGBA8888);
    if (made.isNull())
        return std::nullopt;
    fill(made, *image, isYcc(*image, *header));
    return made;
}

} // namespace MWCore
