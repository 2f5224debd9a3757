// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"
#include "support/literals.h"
#include "support/manualclock.h"

#include <vorrel/core/couchurl.h>
#include <vorrel/core/preparedrequest.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtNetwork/QNetworkReply>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <random>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

constexpr int patience = 60000; // ms; the machine may be busy

/// Stores \p document and gives its new revision.
QString put(QNetworkAccessManager &manager, const DevServer &server, const QJsonObject &document)
{
    const QUrl url = vo::CouchUrl::documentUrl(server.serviceUrl(), server.database(),
                                               document.value("_id"_s).toString());
    QNetworkRequest request(url);
    request.setRawHeader("Content-Type", "application/json");
    const vo::PreparedRequest prepared(QNetworkAccessManager::PutOperation, request);
    const std::unique_ptr<QNetworkReply> reply(
        manager.put(prepared.networkRequest(), QJsonDocument(document).toJson()));
    QSignalSpy(reply.get(), &QNetworkReply::finished).wait(patience);
    return QJsonDocument::fromJson(reply->readAll()).object().value("rev"_s).toString();
}

} // namespace

class tst_Following : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void editsOfAnotherClientArriveThoughTheServerRestarts_data()
    {
        QTest::addColumn<Context::ChangeFeedMonitorType>("type");
        QTest::newRow("continuous") << Context::ContinuousMonitor;
        QTest::newRow("long poll") << Context::LongPollingMonitor;
        QTest::newRow("poll") << Context::PollingMonitor;
    }
    void editsOfAnotherClientArriveThoughTheServerRestarts()
    {
        ManualClock clock;
        DevSite site;
        QFETCH(Context::ChangeFeedMonitorType, type);
        site.monitorType = type;
        Graph graph;
        for (int i = 0; i < 500; ++i) {
            graph.insert(QString::number(i), {});
        }
        QVERIFY2(site.open(graph), qPrintable(site.server.errorString()));
        site.context.setFollowsRemoteEdits(true);
        QStringList ids = graph.keys();
        QSignalSpy loaded(site.context.loadDocuments(ids), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, patience);
        QHash<QString, QString> revisions;
        for (const QString &id : ids) {
            revisions.insert(id, site.context.loadedDocument(id)->revision());
        }
        std::shuffle(ids.begin(), ids.end(), std::mt19937(std::random_device()()));
        QNetworkAccessManager manager;
        for (int i = 0; i < ids.size(); ++i) {
            if (i % 125 == 100 && i < 400 && site.server.isOwnProcess()) {
                site.server.kill();
                QTest::qWait(20);
                QVERIFY2(site.server.start(), qPrintable(site.server.errorString()));
            }
            QString &revision = revisions[ids.at(i)];
            revision = put(manager, site.server,
                           { { "_id"_s, ids.at(i) },
                             { "_rev"_s, revision },
                             { "type"_s, "tag"_s },
                             { "label"_s, "edited"_s } });
            QVERIFY(revision.startsWith("2-"_s));
            clock.advance(100ms);
        }
        const auto isLevel = [&] {
            clock.advance(500ms);
            return std::all_of(ids.begin(), ids.end(), [&](const QString &id) {
                const Document *document = site.context.loadedDocument(id);
                return document->revision() == revisions.value(id)
                    && document->label() == "edited"_s;
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(isLevel(), patience);
    }
};

QTEST_GUILESS_MAIN(tst_Following)
#include "tst_following.moc"
