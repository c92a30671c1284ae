// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <memory>

#include <QByteArray>
#include <QByteArrayView>

#include <libdeflate.h>

namespace MWCore {

/// Decompresses a zlib stream (RFC 1950) into the @p bytes, whose size is the most that it may
/// take, and cuts them to what it took. LIBDEFLATE_INSUFFICIENT_SPACE also if memory runs out.
[[nodiscard]] inline libdeflate_result decompressZlib(QByteArrayView stream, QByteArray *bytes) {
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)>
        decompressor(libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    std::size_t length = 0;
    const libdeflate_result result =
        decompressor
            ? libdeflate_zlib_decompress(decompressor.get(), stream.data(),
                                         static_cast<std::size_t>(stream.size()), bytes->data(),
                                         static_cast<std::size_t>(bytes->size()), &length)
            : LIBDEFLATE_INSUFFICIENT_SPACE;
    bytes->truncate(result == LIBDEFLATE_SUCCESS ? static_cast<qsizetype>(length) : 0);
    return result;
}

} // namespace MWCore
