// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Documents with their files on the way into an archive, and out of it into another database.

#include "support/benchmark.h"
#include "support/sampledocuments.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/archive/documentarchive.h>
#include <vorrel/data/archive/documentimporter.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/util/crc32.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTemporaryDir>

using namespace vo::benchmark;
using namespace vo::data;
using vo::util::Crc32;

namespace {

constexpr int documentCount = 1700;
constexpr int imageCount = 300;
constexpr int imageSize = 350000; // bytes
constexpr double megabyte = 1024.0 * 1024.0;

/// An empty database that answers at once: what it takes to ask is not of interest here.
class EmptyQueue : public LoadQueue
{
public:
    using LoadQueue::LoadQueue;
    [[nodiscard]] bool isLoading() const override { return false; }
    void load(const QSet<QString> &ids) override
    {
        for (const QString &id : ids) {
            Q_EMIT documentNotFound(id);
        }
    }
};

QByteArray md5(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Md5);
}

/// The root refers to all documents, and each to an image.
class Source
{
public:
    Source()
    {
        QByteArray content(imageSize, 'x');
        for (int number = 0; number < imageCount; ++number) {
            content.replace(0, 8, QByteArray::number(10000000 + number));
            const QByteArray hash = md5(content);
            AttachmentStore::storeAttachment(content, hash);
            auto *image = m_context.createDocument(QStringLiteral("asset:image"));
            image->attachmentProperties().constFirst()->set(hash, "image/png");
            m_documents << image;
            m_contents << content;
        }
        m_root = make(documentCount - 1);
        for (int number = 0; number < documentCount - 1; ++number) {
            LinkedDocument *document = make(number);
            refer(document, m_documents.at(number % imageCount), 0);
            refer(m_root, document, number);
            m_documents << document;
        }
        m_documents << m_root;
    }

    void write(const QUrl &file) const { keep(m_root->exportDocument(file)); }

    /// The same bytes, without anything around them.
    void writePlainly(const QString &path) const
    {
        QFile file(path);
        static_cast<void>(file.open(QIODevice::WriteOnly));
        const auto add = [&file](const QByteArray &bytes) {
            const quint32 crc = Crc32::create(bytes);
            file.write(reinterpret_cast<const char *>(&crc), sizeof crc);
            file.write(bytes);
        };
        for (const Document *document : m_documents) {
            add(QJsonDocument(document->serialize()).toJson(QJsonDocument::Compact));
        }
        for (const QByteArray &content : m_contents) {
            add(content);
        }
    }

private:
    LinkedDocument *make(int number)
    {
        m_context.addDocumentNode(sampleId(number).toLatin1(), genericDocument(number));
        return qobject_cast<LinkedDocument *>(m_context.loadedDocument(sampleId(number)));
    }

    static void refer(LinkedDocument *from, const Document *to, int number)
    {
        from->setStructValue(QStringLiteral("links"), QString::number(number),
                             LinkedDocument::encodeReference(to));
    }

    Context m_context;
    LinkedDocument *m_root;
    QList<Document *> m_documents;
    QList<QByteArray> m_contents;
};

void forgetContents()
{
    const QList<QByteArray> hashes = AttachmentStore::unreferencedAttachments({});
    for (const QByteArray &hash : hashes) {
        AttachmentStore::removeAttachment(hash);
    }
}

/// Imports into a new Context.
class Target
{
public:
    Target() { m_context.setLoadQueue(new EmptyQueue(&m_context)); }
    void read(const QUrl &file)
    {
        DocumentImporter importer;
        importer.setContext(&m_context);
        importer.importDocument(file);
        if (importer.error() != DocumentImporter::NoError || importer.isImporting()) {
            qFatal("The benchmark cannot import its archive");
        }
    }

private:
    Context m_context;
};

/// Reads all of the file, and does with its bytes what cannot be left out.
void readPlainly(const QString &path)
{
    QFile file(path);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    keep(file.readAll());
    const DocumentArchive archive(path); // all CRCs
    const QList<DocumentChunk> chunks = archive.chunks();
    for (const DocumentChunk &chunk : chunks) {
        const auto bytes = QByteArray::fromRawData(chunk.data, int(chunk.size));
        if (chunk.type == DocumentChunk::JsonText) {
            keep(QJsonDocument::fromJson(bytes));
        } else if (chunk.type == DocumentChunk::Attachment) {
            keep(md5(bytes));
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*.info=false"));
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("archive"), argc, argv);
    // In memory where that is possible: what a disk takes is not ours.
    const QString memory = QStringLiteral("/dev/shm");
    const QString place = QFile::exists(memory) ? memory : QDir::tempPath();
    const QTemporaryDir directory(place + QStringLiteral("/bench_archive.XXXXXX"));
    vo::Locations::setCacheLocation(directory.path());
    const QString path = directory.filePath(QStringLiteral("all.vorrel"));
    const QUrl file = QUrl::fromLocalFile(path);
    const QString plain = directory.filePath(QStringLiteral("plain"));
    const double allBytes = double(imageCount) * imageSize / megabyte;
    const QString megabytes = QStringLiteral("MB");
    {
        const Source source;
        source.write(file);
        report.compare(
            { QStringLiteral("export"), 1, QStringLiteral("ms"), 0,
              QStringLiteral("serialise, CRC, write"), 0, 1.5 },
            [&] { source.write(file); }, [&] { source.writePlainly(plain); });
        const double before = peakMemory(true);
        source.write(file);
        report.add({ QStringLiteral("peak memory of an export"), 1, megabytes,
                     (peakMemory(false) - before) / megabyte, QStringLiteral("all files"), allBytes,
                     0 });
    }
    QList<double> ours;
    QList<double> plainly;
    for (int run = 0; run < report.runs(); ++run) {
        forgetContents();
        Target target;
        ours << cpuTime([&] { target.read(file); }) / 1e6;
        plainly << cpuTime([&] { readPlainly(path); }) / 1e6;
    }
    report.add({ QStringLiteral("import"), 1, QStringLiteral("ms"), median(ours),
                 QStringLiteral("read, CRC, MD5, parse"), median(plainly), 1.5 });
    forgetContents();
    Target target;
    const double before = peakMemory(true);
    target.read(file);
    report.add({ QStringLiteral("peak memory of an import"), 1, megabytes,
                 (peakMemory(false) - before) / megabyte, QStringLiteral("the mapped file"),
                 allBytes, 0 });
}
