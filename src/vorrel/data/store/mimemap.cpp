// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QFileInfo>
#include <QtCore/QMimeDatabase>

#include <algorithm>
#include <array>

namespace vo::data {

namespace {

struct Entry
{
    const char *suffix;
    const char *type;
};

// The first suffix of a type is the one that new files get.
constexpr std::array table {
    Entry { "jpg", "image/jpeg" },        Entry { "jpeg", "image/jpeg" },
    Entry { "png", "image/png" },         Entry { "gif", "image/gif" },
    Entry { "webp", "image/webp" },       Entry { "svg", "image/svg+xml" },
    Entry { "mp4", "video/mp4" },         Entry { "webm", "video/webm" },
    Entry { "pdf", "application/pdf" },   Entry { "ttf", "font/ttf" },
    Entry { "otf", "font/otf" },          Entry { "woff", "font/woff" },
    Entry { "woff2", "font/woff2" },      Entry { "txt", "text/plain" },
    Entry { "html", "text/html" },        Entry { "htm", "text/html" },
    Entry { "css", "text/css" },          Entry { "js", "application/javascript" },
    Entry { "json", "application/json" }, Entry { "qml", "text/x-qml" },
};

template <typename Match>
const Entry *find(Match match)
{
    const auto *found = std::find_if(table.begin(), table.end(), match);
    return found == table.end() ? nullptr : found;
}

} // namespace

QByteArray MimeMap::mimeTypeForFile(const QString &fileName)
{
    const QByteArray suffix = QFileInfo(fileName).suffix().toLower().toLatin1();
    if (const Entry *entry = find([&](const Entry &e) { return suffix == e.suffix; })) {
        return entry->type;
    }
    const QMimeType type = QMimeDatabase().mimeTypeForFile(fileName);
    return type.isValid() ? type.name().toLatin1() : QByteArrayLiteral("application/octet-stream");
}

QByteArray MimeMap::mimeTypeForSuffix(const QString &suffix)
{
    return mimeTypeForFile(QStringLiteral("file.") + suffix);
}

QByteArray MimeMap::suffixForMimetype(const QString &mimeType)
{
    const QByteArray name = mimeType.toLower().toLatin1();
    if (const Entry *entry = find([&](const Entry &e) { return name == e.type; })) {
        return entry->suffix;
    }
    const QStringList suffixes =
        QMimeDatabase().mimeTypeForName(QString::fromLatin1(name)).suffixes();
    return suffixes.value(0).toLower().toLatin1();
}

} // namespace vo::data
