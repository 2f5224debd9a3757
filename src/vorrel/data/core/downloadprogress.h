// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

namespace vo::data {

/// How far one download has come. Context::beginDownload() hands one out, its holder keeps it up to
/// date, and Context::endDownload() finishes it.
struct DownloadProgress
{
    qint64 received = 0; // bytes
    qint64 total = 0;    // bytes; 0 or less as long as it is not known
    bool finished = false;
};

} // namespace vo::data
