// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/crc32.h>

#include <zlib.h>

namespace vo::util {

quint32 Crc32::create(const QByteArray &data)
{
    return create(data.constData(), data.size());
}

quint32 Crc32::create(const char *data, qint64 size)
{
    // For zlib a null pointer asks for the first checksum of all, which no data has, too.
    return quint32(crc32_z(0, reinterpret_cast<const Bytef *>(data), z_size_t(size)));
}

bool Crc32::check(const char *data, int size, quint32 checksum)
{
    return size >= 0 && create(data, size) == checksum;
}

} // namespace vo::util
