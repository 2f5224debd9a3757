// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/locations.h>

#include <QtCore/QStandardPaths>

namespace vo {

namespace {
QString &chosenCacheLocation()
{
    static QString path;
    return path;
}
} // namespace

QDir Locations::cacheLocation()
{
    const QString &chosen = chosenCacheLocation();
    return QDir(chosen.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
                                 : chosen);
}

void Locations::setCacheLocation(const QString &path)
{
    chosenCacheLocation() = path;
}

} // namespace vo
