// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/archives.h"

#include "support/literals.h"

#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/util/crc32.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QtEndian>

namespace vo::test {

namespace {

template <typename Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << number;
    return bytes;
}

const QByteArray image = "not really an image";
const QByteArray imageHash = QCryptographicHash::hash(image, QCryptographicHash::Md5);
const int headerSize = 8;
const int chunkHeaderSize = 10;

QByteArray imageChunk()
{
    return archiveChunk(4, attachmentPayload("file", imageHash, "image/png", image));
}

/// In the binary form of Qt 5, an object with arrays one inside the other.
QByteArray nestedArrays(int depth)
{
    QByteArray bytes = bytesOf(12U) + bytesOf(0U) + bytesOf(0U);
    for (int level = 1; level < depth; ++level) {
        const auto size = quint32(bytes.size());
        bytes =
            bytesOf(16 + size) + bytesOf(2U) + bytesOf(12 + size) + bytes + bytesOf(4U | 12U << 5);
    }
    const auto size = quint32(bytes.size());
    return "qbjs" + bytesOf(1U) + bytesOf(24 + size) + bytesOf(3U) + bytesOf(20 + size)
        + bytesOf(4U | 0x10U | 20U << 5) + QByteArray("\1\0a\0", 4) + bytes + bytesOf(12U);
}

QList<QByteArray> goodChunks()
{
    return { archiveChunk(0, "root"),
             archiveChunk(1, "picture"),
             archiveChunk(2, "asset:image"),
             archiveChunk(6, R"({"fileName":"a.png"})"),
             imageChunk(),
             archiveChunk(1, "root"),
             archiveChunk(2, "tag"),
             archiveChunk(6, R"({"name":"root"})") };
}

class Collection
{
public:
    void refused(const QByteArray &name, const QByteArray &bytes)
    {
        archives.append({ name, bytes, true });
    }
    /// Takes a place in an archive that is good otherwise.
    void leftOut(const QByteArray &name, const QList<QByteArray> &group)
    {
        archives.append({ name, archiveOf(goodChunks() + group), false });
    }

    QList<BadArchive> archives;
};

void damage(Collection &all)
{
    const QByteArray good = archiveOf(goodChunks());
    for (int length = 0; length < good.size(); ++length) {
        all.refused("truncated at " + QByteArray::number(length), good.left(length));
    }
    const auto change = [&](const QByteArray &name, int position, const QByteArray &bytes) {
        QByteArray changed = good;
        all.refused(name, changed.replace(position, bytes.size(), bytes));
    };
    for (int position = 0; position < headerSize - 2; ++position) {
        change("header byte " + QByteArray::number(position), position, "\x02");
    }
    for (const int count : { 0, 9, 256, 0xffff }) {
        change("count " + QByteArray::number(count), headerSize - 2, bytesOf(quint16(count)));
    }
    int position = headerSize;
    for (const QByteArray &chunk : goodChunks()) {
        const QByteArray at = " of the chunk at " + QByteArray::number(position);
        const auto size = quint32(chunk.size() - chunkHeaderSize);
        for (const quint32 lie :
             { 0U, size - 1, size + 1, 0x7fffffffU, 0xfffffff6U, 0xffffffffU }) {
            change("size " + QByteArray::number(lie) + at, position + 2, bytesOf(lie));
        }
        for (int byte = 6; byte <= chunkHeaderSize; ++byte) {
            change("byte " + QByteArray::number(byte) + at, position + byte,
                   QByteArray(1, char(chunk[byte] ^ 1)));
        }
        position += int(chunk.size());
    }
}

void badIds(Collection &all)
{
    const QList<QByteArray> ids {
        "", "_", "_design/shop", "_local/x", QByteArray(256, 'x'), QByteArray(100000, 'x')
    };
    for (const QByteArray &id : ids) {
        for (const int type : { 1, 5 }) {
            all.refused("id " + id.left(10) + QByteArray::number(id.size()) + " in a chunk "
                            + QByteArray::number(type),
                        archiveOf(goodChunks() + QList { archiveChunk(quint16(type), id) }
                                  + QList { archiveChunk(6, "{}") }));
        }
    }
}

void badGroups(Collection &all)
{
    const QByteArray id = archiveChunk(1, "loaded");
    const QByteArray json =
        archiveChunk(6, R"({"name": "overwritten", ":data": {"s:a": {"b": 1}}})");
    for (const char *type : { "asset", "asset:image", "mediaassetfolder" }) {
        all.leftOut(QByteArray("another document as ") + type,
                    { id, archiveChunk(2, type), json, imageChunk() });
    }
    for (const QByteArray &type :
         QList<QByteArray> { "", "Tag", "no:such:type", "\xff", QByteArray(70000, 'x') }) {
        all.leftOut("type " + type.left(12), { archiveChunk(1, "x"), archiveChunk(2, type), json });
    }
    const QList<QByteArray> texts { "",
                                    "{",
                                    "[]",
                                    "null",
                                    "7",
                                    "{\"name\": tru}",
                                    "{} {}",
                                    "\xff\xfe",
                                    "{\"name\":" + QByteArray(100000, '['),
                                    "{\"a\":" + QByteArray("{\"a\":").repeated(2000),
                                    nestedArrays(1024) };
    for (const QByteArray &text : texts) {
        for (const int type : { 3, 6 }) {
            all.leftOut("values " + text.left(10) + QByteArray::number(text.size()) + " in a chunk "
                            + QByteArray::number(type),
                        { archiveChunk(1, "x"), archiveChunk(2, "tag"),
                          archiveChunk(quint16(type), text), archiveChunk(9, "x") });
        }
    }
}

void badAttachments(Collection &all)
{
    const auto add = [&](const QByteArray &name, const QByteArray &payload) {
        all.leftOut("attachment " + name,
                    { archiveChunk(1, "other"), archiveChunk(2, "asset:image"),
                      archiveChunk(4, payload), archiveChunk(9, "x") });
    };
    const QByteArray text = "other content";
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Md5);
    const QByteArray good = attachmentPayload("file", hash, "image/png", text);
    for (int length = 0; length < good.size(); length += 3) {
        add("cut at " + QByteArray::number(length), good.left(length));
    }
    for (const int position : { 0, 8, 28, 41 }) { // of the four lengths
        for (const quint32 lie : { 0x7fffffffU, 0x80000000U, 0xfffffffeU, 0xfffffff0U }) {
            QByteArray changed = good;
            const QByteArray length = bytesOf(qToBigEndian(lie));
            add("length " + QByteArray::number(lie) + " at " + QByteArray::number(position),
                changed.replace(position, length.size(), length));
        }
    }
    add("null", QByteArray(16, '\xff'));
    add("hash of other content", attachmentPayload("file", hash, "image/png", text + "!"));
    add("hash too short", attachmentPayload("file", hash.left(15), "image/png", text));
    add("hash in digits", attachmentPayload("file", hash.toHex(), "image/png", text));
    add("no hash", attachmentPayload("file", "", "image/png", text));
    add("MIME type of two lines", attachmentPayload("file", hash, "a/b\r\nX: y", text));
    add("MIME type without end", attachmentPayload("file", hash, QByteArray(70000, 'x'), text));
}

} // namespace

QByteArray archiveChunk(quint16 type, const QByteArray &payload)
{
    return bytesOf(type) + bytesOf(quint32(payload.size())) + bytesOf(util::Crc32::create(payload))
        + payload;
}

QByteArray archiveOf(const QList<QByteArray> &chunks)
{
    QByteArray bytes = QByteArray("VPKG\1\0", 6) + bytesOf(quint16(chunks.size()));
    for (const QByteArray &chunk : chunks) {
        bytes += chunk;
    }
    return bytes;
}

QByteArray attachmentPayload(const QByteArray &property, const QByteArray &hash,
                             const QByteArray &mimeType, const QByteArray &content)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    stream << property << hash << mimeType << content;
    return payload;
}

QList<BadArchive> badArchives()
{
    Collection all;
    damage(all);
    badIds(all);
    badGroups(all);
    badAttachments(all);
    const QByteArray orphan =
        archiveOf({ archiveChunk(2, "tag"), archiveChunk(6, R"({"name": ""})") });
    all.archives.append({ "type without an id", orphan, false });
    return all.archives;
}

QJsonObject contentOf(const data::Document *document)
{
    QJsonObject content = document->serialize();
    for (const QString &key : "_id _rev created edited creationVersion references"_l) {
        content.remove(key);
    }
    QByteArray text = QJsonDocument(content).toJson(QJsonDocument::Compact);
    QSet<QString> ids;
    document->aggregateReferences(ids);
    for (const QString &id : ids) {
        const data::Document *target = document->context()->loadedDocument(id);
        text.replace(id.toLatin1(), target ? target->label().toUtf8() : "nothing");
    }
    content = QJsonDocument::fromJson(text).object();
    for (data::Attachment *attachment : document->attachments()) {
        content.insert(attachment->name() + " type"_s, QString::fromLatin1(attachment->mimeType()));
    }
    return content;
}

Import::Import(data::Context *context)
{
    setContext(context);
    connect(this, &DocumentImporter::importFinished, [this](data::Document *document) {
        ++ends;
        result = qobject_cast<data::LinkedDocument *>(document);
    });
    connect(this, &DocumentImporter::importFailed, [this] { ++ends; });
}

data::DocumentImporter::Error Import::run(ContextFixture &fixture, const QUrl &file)
{
    importDocument(file);
    static_cast<void>(fixture.finishLoading());
    return error();
}

QByteArray exampleOfPage()
{
    const QString page = qEnvironmentVariable("VORREL_SOURCE_DIR") + "/docs/formats/archive.md"_s;
    QByteArray bytes;
    for (const QByteArray &line : readAll(QUrl::fromLocalFile(page)).split('\n')) {
        const bool isDump = line.startsWith("    00") && line.mid(8, 2) == "  ";
        bytes += isDump ? QByteArray::fromHex(line.mid(10, 48)) : QByteArray();
    }
    return bytes;
}

QByteArray readAll(const QUrl &file)
{
    QFile content(file.toLocalFile());
    return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray("unreadable");
}

void attachContent(data::AttachmentProperty *file, const QByteArray &content)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Md5);
    data::AttachmentStore::storeAttachment(content, hash);
    file->set(hash, "image/png");
}

Station *makeStations(TestContext &context)
{
    auto *root = context.create();
    auto *next = context.create();
    auto *exit = context.create();
    auto *named = context.create();
    int number = 0;
    for (Station *station : { root, next, exit, named }) {
        station->setLabel("station %1"_s.arg(++number));
    }
    root->setNumber(3);
    root->setText("$ref(0,) and \"text\" ä"_s);
    root->setMoment(QDateTime(QDate(2025, 4, 12), QTime(12, 24), Qt::UTC));
    root->setTitle("title"_s);
    root->setStory("story"_s);
    root->setNext(next);
    next->setNext(named);
    root->d->palette.set({ Qt::red, Qt::blue });
    root->d->prices.set("AT"_s, 2.5);
    root->d->caption.insert("_"_s, "caption"_s);
    root->d->notes.insert(root->newNote("one"_s), -1);
    root->d->notes.insert(root->newNote("two"_s), -1);
    root->d->exits.insert("north"_s, exit);
    exit->setStructValue("a"_s, "station"_s, data::LinkedDocument::encodeReference(next));
    exit->setStructValue("a"_s, "named"_s, data::LinkedDocument::encodeReference(named));
    exit->setStructValue("a"_s, "list"_s, QJsonArray { named->documentId(), 1, "x"_s });
    attachContent(&root->d->photo, "photo");
    attachContent(&next->d->photo, "photo");
    attachContent(&next->d->film, "film");
    return root;
}

QJsonObject storedForm(const data::Document *document)
{
    QJsonObject files;
    for (const data::AttachmentProperty *file : document->attachmentProperties()) {
        if (!file->rawHash().isEmpty()) {
            const QByteArray content = readAll(data::AttachmentStore::find(file->rawHash()));
            files.insert(QString::fromLatin1(file->hash()),
                         QJsonObject { { "content_type"_s, QString::fromLatin1(file->mimeType()) },
                                       { "data"_s, QString::fromLatin1(content.toBase64()) } });
        }
    }
    QJsonObject object = document->serialize();
    object.insert("_attachments"_s, files);
    return object;
}

QList<QJsonObject> makeGraph(int stationCount, int imageCount)
{
    TestContext context;
    QList<data::Document *> images;
    QList<Station *> stations;
    for (int number = 0; number < imageCount; ++number) {
        images << context.createDocument("asset:image"_s);
        static_cast<data::LinkedDocument *>(images.last())->setLabel("image %1"_s.arg(number));
        attachContent(images.last()->attachmentProperties().constFirst(),
                      QByteArray(1000 + number, 'x'));
    }
    for (int number = 0; number < stationCount; ++number) {
        stations << static_cast<Station *>(context.createDocument("station"_s));
        stations.last()->setLabel("station %1"_s.arg(number));
        stations.last()->setStructValue(
            "a"_s, "image"_s, data::LinkedDocument::encodeReference(images[number % imageCount]));
    }
    for (int number = 1; number < stationCount; ++number) {
        stations[(number - 1) / 2]->d->exits.insert(QString::number(number), stations[number]);
        stations[number - 1]->setNext(stations[std::min(number + 100, stationCount - 1)]);
    }
    QList<QJsonObject> stored;
    for (const data::Document *station : std::as_const(stations)) {
        stored << storedForm(station);
    }
    for (const data::Document *picture : std::as_const(images)) {
        stored << storedForm(picture);
    }
    return stored;
}

QStringList differences(const QMap<QString, data::Document *> &documents,
                        const QMap<QString, data::Document *> &others)
{
    QStringList labels;
    for (auto it = documents.begin(); it != documents.end(); ++it) {
        const data::Document *copy = others.value(it.key());
        labels << (copy && contentOf(copy) == contentOf(*it) ? QStringList()
                                                             : QStringList(it.key()));
    }
    return documents.size() == others.size() ? labels : labels << "count"_s;
}

} // namespace vo::test
