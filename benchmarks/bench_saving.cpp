// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The way of documents from the Context into the database, one upload after the other.

#include "support/benchmark.h"
#include "support/cannedserver.h"
#include "support/sampledocuments.h"

#include <vorrel/core/couchurl.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/transfer/uploadbody_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

constexpr double megabyte = 1024.0 * 1024.0;

/// By the clock, in milliseconds for each item.
double timeEach(int count, const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e6 / count;
}

/// What they are uploaded as.
QByteArray bodyOf(const Document *document)
{
    QJsonObject object = document->serialize();
    object.insert(QStringLiteral("_attachments"), QJsonObject());
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// Documents that the database holds, with an edit.
class Edited
{
public:
    Edited(const QUrl &server, int count)
    {
        m_context.setChangeFeedMonitorType(Context::NullMonitor);
        m_context.setServiceUrl(server);
        m_context.setNetworkAccessManager(&m_manager);
        m_context.setDatabase(QStringLiteral("save"));
        for (int number = 0; number < count; ++number) {
            m_context.addDocumentNode(sampleId(number).toLatin1(), genericDocument(number));
            auto *document =
                qobject_cast<LinkedDocument *>(m_context.loadedDocument(sampleId(number)));
            document->setLabel(QStringLiteral("edited"));
            m_documents.append(document);
        }
    }

    void save()
    {
        QEventLoop loop;
        QObject::connect(&m_context, &Context::saved, &loop, [&loop](bool success) {
            if (!success) {
                qFatal("The benchmark server refused a document");
            }
            loop.quit();
        });
        m_context.saveLocalChanges();
        loop.exec();
    }

    [[nodiscard]] const QList<LinkedDocument *> &documents() const { return m_documents; }

private:
    QNetworkAccessManager m_manager;
    Context m_context;
    QList<LinkedDocument *> m_documents;
};

/// The bodies in files, and the file that tells curl to upload them on one connection.
class CurlJob
{
public:
    CurlJob(const QUrl &server, const QList<LinkedDocument *> &documents)
    {
        QByteArray config = "silent\n";
        for (const LinkedDocument *document : documents) {
            const QString body = m_directory.filePath(document->documentId());
            write(body, bodyOf(document));
            const QUrl url =
                vo::CouchUrl::documentUrl(server, QStringLiteral("save"), document->documentId());
            config += config.contains("url") ? "next\nsilent\n" : "";
            config += "url = \"" + url.toEncoded() + "\"\nupload-file = \"" + body.toUtf8()
                + "\"\nheader = \"Content-Type: application/json\"\noutput = \"/dev/null\"\n";
        }
        write(configFile(), config);
    }

    /// False where there is no curl.
    [[nodiscard]] bool run() const
    {
        return QProcess::execute(QStringLiteral("curl"),
                                 { QStringLiteral("--config"), configFile() })
            == 0;
    }

private:
    [[nodiscard]] QString configFile() const
    {
        return m_directory.filePath(QStringLiteral("config"));
    }

    static void write(const QString &name, const QByteArray &content)
    {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("The benchmark cannot write its files");
        }
    }

    QTemporaryDir m_directory;
};

/// Uploads the same bodies, without anything around it.
void putPlainly(const QUrl &server, const QList<LinkedDocument *> &documents)
{
    QNetworkAccessManager manager;
    for (const LinkedDocument *document : documents) {
        QNetworkRequest request(
            vo::CouchUrl::documentUrl(server, QStringLiteral("save"), document->documentId()));
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        request.setRawHeader("Expect", "100-continue"); // without it Qt 5 loses 40 ms each time
        QNetworkReply *reply = manager.put(request, bodyOf(document));
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        reply->deleteLater();
    }
}

/// Serialises the documents and writes the files, on this thread alone.
void prepare(const QList<LinkedDocument *> &documents)
{
    for (const LinkedDocument *document : documents) {
        UploadBody body;
        keep(buildTransferItems(document->documentUrl(), document->serialize(), {}, body));
    }
}

void measureTimes(Report &report, const CannedServer &server, int count)
{
    QList<double> ours;
    QList<double> curl;
    QList<double> plain;
    QList<double> preparing;
    for (int run = 0; run < report.runs(); ++run) {
        Edited edited(server.url(), count);
        const CurlJob job(server.url(), edited.documents());
        bool hasCurl = false;
        const double curlTime = timeEach(count, [&] { hasCurl = job.run(); });
        if (hasCurl) {
            curl << curlTime;
        }
        plain << timeEach(count, [&] { putPlainly(server.url(), edited.documents()); });
        preparing << timeEach(count, [&] { prepare(edited.documents()); });
        ours << timeEach(count, [&] { edited.save(); });
    }
    const QString unit = QStringLiteral("ms");
    const QString plainName = QStringLiteral("QNetworkAccessManager::put");
    const QString work = QStringLiteral("save, one after the other");
    if (!curl.isEmpty()) {
        report.add({ work, count, unit, median(ours), QStringLiteral("curl"), median(curl), 1.3 });
    }
    report.add({ work, count, unit, median(ours), plainName, median(plain), 0 });
    report.add({ QStringLiteral("preparing alone"), count, unit, median(preparing),
                 QStringLiteral("the whole"), median(ours), 0 });
}

/// Documents with a text of a megabyte each. They are in memory anyway; their bodies need not be.
void measureMemory(Report &report, const CannedServer &server)
{
    constexpr int count = 100;
    constexpr int size = 1024 * 1024;
    Edited edited(server.url(), count);
    for (int number = 0; number < count; ++number) {
        edited.documents().at(number)->setStructValue(
            QStringLiteral("text"), QStringLiteral("text"),
            QString(size, QLatin1Char(char('a' + number % 20))));
    }
    const double before = peakMemory(true);
    edited.save();
    report.add({ QStringLiteral("peak memory of a save"), count, QStringLiteral("MB"),
                 (peakMemory(false) - before) / megabyte, QStringLiteral("all bodies"),
                 count * double(size) / megabyte, 0.2 });
}

} // namespace

int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*.info=false"));
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("saving"), argc, argv);
    const CannedServer server(
        [](const QByteArray &) {
            return QByteArray(R"({"ok":true,"id":"a","rev":"2-967a00dff5e02add41819138abb3284d"})");
        },
        "201 Created");
    measureTimes(report, server, 1000);
    measureMemory(report, server);
    return 0;
}
