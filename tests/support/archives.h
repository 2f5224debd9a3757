// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>

#include <functional>

namespace vo::test {

/// A chunk of a content archive, and an archive of such chunks.
[[nodiscard]] QByteArray archiveChunk(quint16 type, const QByteArray &payload);
[[nodiscard]] QByteArray archiveOf(const QList<QByteArray> &chunks);

/// The payload of an attachment chunk.
[[nodiscard]] QByteArray attachmentPayload(const QByteArray &property, const QByteArray &hash,
                                           const QByteArray &mimeType, const QByteArray &content);

/// An archive in which something is wrong: all of it is refused, or something in it is left out.
struct BadArchive
{
    QByteArray name;
    QByteArray bytes;
    bool isRefused;
};

/// Hundreds of them. Those that say something about a document that exists name it "loaded".
[[nodiscard]] QList<BadArchive> badArchives();

/// What of a document goes through an archive, with \p nameOf each id that it refers to.
[[nodiscard]] QJsonObject contentOf(const data::LinkedDocument *document,
                                    const std::function<QString(const QString &id)> &nameOf);

} // namespace vo::test
