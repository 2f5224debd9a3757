// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/lz4.h>

#include <lz4.h>

namespace vo::util {

QByteArray LZ4::compress(const QByteArray &data)
{
    if (data.size() > LZ4_MAX_INPUT_SIZE) {
        return {};
    }
    const int size = int(data.size());
    QByteArray block(LZ4_compressBound(size), Qt::Uninitialized);
    block.truncate(LZ4_compress_default(data.constData(), block.data(), size, int(block.size())));
    return block;
}

QByteArray LZ4::decompress(const QByteArray &data, int size)
{
    // No block can hold more than 255 times its length. Some room, since that is not to the byte.
    constexpr qint64 highestRatio = 255;
    constexpr qint64 room = 64;
    if (size <= 0 || size > highestRatio * data.size() + room) {
        return {};
    }
    QByteArray plain(size, Qt::Uninitialized);
    const int written = LZ4_decompress_safe(data.constData(), plain.data(), int(data.size()), size);
    return written == size ? plain : QByteArray();
}

} // namespace vo::util
