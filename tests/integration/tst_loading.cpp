// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/devserver.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/context/loadrequest.h>

#include <QtCore/QIODevice>
#include <QtCore/QJsonArray>
#include <QtCore/QLoggingCategory>
#include <QtNetwork/QNetworkAccessManager>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

constexpr int patience = 60000; // ms; the machine may be busy

/// Notes which documents each bulk request asks for.
class CountingManager : public QNetworkAccessManager
{
public:
    QList<QStringList> batches;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *body) override
    {
        if (operation == PostOperation) {
            const QJsonObject json =
                QJsonDocument::fromJson(body->peek(body->bytesAvailable())).object();
            batches << json.value("keys"_s).toVariant().toStringList();
        }
        return QNetworkAccessManager::createRequest(operation, request, body);
    }
};

/// A server, and a Context on it.
struct Site
{
    explicit Site(const QString &user = QString(), const QString &password = QString())
        : server(user, password)
    { }

    /// Stores tags, and opens the database.
    bool open(const QMap<QString, QStringList> &documents)
    {
        QList<QJsonObject> objects;
        for (auto it = documents.begin(); it != documents.end(); ++it) {
            objects << QJsonObject { { "_id"_s, it.key() },
                                     { "type"_s, "tag"_s },
                                     { "references"_s, QJsonArray::fromStringList(it.value()) } };
        }
        if (!server.start() || !server.store(objects)) {
            return false;
        }
        context.setServiceUrl(server.serviceUrl());
        context.setNetworkAccessManager(&manager);
        context.setDatabase(server.database());
        return true;
    }

    DevServer server;
    CountingManager manager;
    Context context;
};

QStringList numbered(int count)
{
    QStringList ids;
    for (int i = 0; i < count; ++i) {
        ids << "document %1"_s.arg(i);
    }
    return ids;
}

} // namespace

class tst_Loading : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aThousandDocumentsComeThoughTheServerDies()
    {
        ManualClock clock;
        LogCapture log;
        Site site;
        QMap<QString, QStringList> documents;
        const QStringList ids = numbered(1000);
        for (const QString &id : ids) {
            documents.insert(id, {});
        }
        QVERIFY2(site.open(documents), qPrintable(site.server.errorString()));
        bool killed = false;
        int nodes = 0;
        QObject::connect(&site.context, &Context::documentNodeAdded, [&] {
            if (++nodes == 500 && site.server.isOwnProcess()) {
                killed = true;
                site.server.kill();
            }
        });
        QSignalSpy finished(site.context.loadDocuments(ids), &LoadRequest::finished);
        int failed = 0;
        if (site.server.isOwnProcess()) {
            QTRY_VERIFY_WITH_TIMEOUT(log.contains("|critical|Document load request failed"_s),
                                     patience);
            QVERIFY(killed && site.context.isBusy());
            failed = 1;
            QVERIFY2(site.server.start(), qPrintable(site.server.errorString()));
            clock.advance(3s);
        }
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QCOMPARE(nodes, 1000);
        QTRY_VERIFY_WITH_TIMEOUT(!site.context.isBusy(), patience);
        QVERIFY(site.context.loadedDocument("document 999"_s));

        QCOMPARE(site.manager.batches.size(), 40 + failed);
        QSet<QString> asked;
        for (const QStringList &batch : std::as_const(site.manager.batches)) {
            QCOMPARE(batch.size(), 25);
            asked |= QSet<QString>(batch.begin(), batch.end());
        }
        QCOMPARE(asked.size(), 1000);
        QCOMPARE(log.count("|critical|"_s), failed);
        QCOMPARE(log.count("succeeded after 1 failed attempts"_s), failed);
    }

    void aDocumentComesAfterItsReferences()
    {
        LogCapture log;
        Site site;
        QStringList references = numbered(60);
        QMap<QString, QStringList> documents { { "list"_s, references + "gone"_l } };
        for (const QString &id : std::as_const(references)) {
            documents.insert(id, {});
        }
        QVERIFY2(site.open(documents), qPrintable(site.server.errorString()));
        QStringList order;
        QObject::connect(&site.context, &Context::documentNodeAdded,
                         [&](const QString &id) { order << id; });
        QSignalSpy finished(site.context.loadDocument("list"_s), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QCOMPARE(order.takeLast(), "list"_s);
        order.sort();
        references.sort();
        QCOMPARE(order, references);
        QList<int> sizes;
        for (const QStringList &batch : std::as_const(site.manager.batches)) {
            sizes << int(batch.size());
        }
        QCOMPARE(sizes, QList<int>({ 1, 25, 25, 11 })); // 60, and the one that does not exist
        QCOMPARE(site.context.loadedDocument("list"_s)->revision().left(2), "1-"_s);
        QVERIFY(log.contains("|info|Loaded 1 documents: 0 cached, 1 remote"_s));
    }

    void thePasswordOpensTheDatabaseAndIsNeverLogged()
    {
        const QString secret = "pass:w/ö rd%"_s;
        QLoggingCategory::setFilterRules("vorrel.*=true"_s);
        LogCapture log;
        Site site("reader"_s, secret);
        QVERIFY2(site.open({ { "a"_s, { "b"_s } } }), qPrintable(site.server.errorString()));
        const QString password = site.server.serviceUrl().password(QUrl::FullyDecoded);
        if (password.isEmpty()) {
            QSKIP("The server that VORREL_TEST_URL names needs no password");
        }
        QSignalSpy finished(site.context.loadDocument("a"_s), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QVERIFY(site.context.loadedDocument("a"_s));
        QVERIFY(log.contains("|debug|"_s));

        // And with a wrong one nothing comes.
        QUrl wrong = site.server.serviceUrl();
        wrong.setPassword(password + "x"_s);
        site.context.setServiceUrl(wrong);
        site.context.loadDocument("c"_s);
        QTRY_VERIFY_WITH_TIMEOUT(
            log.contains("|critical|Document load request failed with HTTP status 401"_s),
            patience);
        site.context.setDatabase("other"_s);
        site.context.documentReport();
        const QString lines = log.lines().join(QLatin1Char('\n'));
        for (const QString &form :
             { password, site.server.serviceUrl().password(QUrl::FullyEncoded),
               QString::fromLatin1(password.toUtf8().toPercentEncoding()),
               QString::fromLatin1((site.server.serviceUrl().userName() + ":"_s + password)
                                       .toUtf8()
                                       .toBase64()) }) {
            QVERIFY2(!lines.contains(form), qPrintable(lines));
        }
        QLoggingCategory::setFilterRules(QString());
    }
};

QTEST_GUILESS_MAIN(tst_Loading)
#include "tst_loading.moc"
