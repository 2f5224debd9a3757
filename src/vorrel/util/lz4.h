// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/util/utilexport.h>

#include <QtCore/QByteArray>

namespace vo::util {

/// The LZ4 block codec. A block does not hold the size of its content: whoever stores the one has
/// to store the other. May be used from any thread.
class VORREL_UTIL_EXPORT LZ4
{
public:
    /// One block. Empty if \p data is larger than LZ4 can take, 0x7E000000 bytes.
    [[nodiscard]] static QByteArray compress(const QByteArray &data);

    /// The \p size bytes that the block \p data holds. Empty on failure: if they are not exactly
    /// that many, or if \p size is more than a block of this length can hold, for which no memory
    /// is taken. The block may come from anywhere.
    [[nodiscard]] static QByteArray decompress(const QByteArray &data, int size);

    LZ4() = delete;
};

} // namespace vo::util
