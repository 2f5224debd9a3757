// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/coreexport.h>

#include <QtCore/QDir>

namespace vo {

/// Where the library keeps its files. All of it is for the current user.
class VORREL_CORE_EXPORT Locations
{
public:
    /// The cache directory of the application: QStandardPaths::CacheLocation unless
    /// setCacheLocation() named another. It need not exist; callers make what they need below it.
    static QDir cacheLocation();

    /// Puts the cache somewhere else, for instance one place per server, since caches are told
    /// apart by database name only. An empty path goes back to the default. Call it before the
    /// first Context opens a database.
    static void setCacheLocation(const QString &path);

    Locations() = delete;
};

} // namespace vo
