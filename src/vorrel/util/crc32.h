// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/util/utilexport.h>

#include <QtCore/QByteArray>

namespace vo::util {

/// The checksum CRC-32 of zlib, gzip and PNG. It finds damage, not malice. May be used from any
/// thread.
class VORREL_UTIL_EXPORT Crc32
{
public:
    [[nodiscard]] static quint32 create(const QByteArray &data);

    /// Whether the \p size bytes at \p data have this checksum.
    [[nodiscard]] static bool check(const char *data, int size, quint32 checksum);

    /// The same for what may be larger than 2 GiB.
    [[nodiscard]] static quint32 create(const char *data, qint64 size);

    Crc32() = delete;
};

} // namespace vo::util
