// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"
#include "support/testdocuments.h"

#include <vorrel/data/archive/documentimporter.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPointer>

namespace vo::test {

/// A station that goes into archives as something else.
class Preset : public Station
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "preset")
    Q_CLASSINFO("ExportType", "data:preset")
    Q_CLASSINFO("ExportLabel", "Media of presets")
public:
    using Station::Station;
};

/// An importer that remembers how it ended.
struct Import : data::DocumentImporter
{
    explicit Import(data::Context *context);

    /// Imports the file by ticks of the fixture. The error.
    Error run(ContextFixture &fixture, const QUrl &file);

    /// True if the import has ended, and once only.
    [[nodiscard]] bool hasEnded() const { return ends == 1 && !isImporting(); }

    int ends = 0;
    QPointer<data::LinkedDocument> result;
};

/// Stores the content, and makes it the value of the property.
void attachContent(data::AttachmentProperty *file, const QByteArray &content);

/// The first of four stations with a value of each kind, and labels; it leads to the others.
[[nodiscard]] Station *makeStations(TestContext &context);

/// As a client sends the document to the database, with its files.
[[nodiscard]] QJsonObject storedForm(const data::Document *document);

/// So many stations and images, with files, as they are stored. The first one leads to all.
[[nodiscard]] QList<QJsonObject> makeGraph(int stationCount, int imageCount);

/// The labels under which there is not the same content on both sides.
[[nodiscard]] QStringList differences(const QMap<QString, data::Document *> &documents,
                                      const QMap<QString, data::Document *> &others);

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

/// The bytes of the example in docs/formats/archive.md.
[[nodiscard]] QByteArray exampleOfPage();

[[nodiscard]] QByteArray readAll(const QUrl &file);

/// What of a document goes through an archive, with labels in the place of the ids that it refers
/// to.
[[nodiscard]] QJsonObject contentOf(const data::Document *document);

} // namespace vo::test
