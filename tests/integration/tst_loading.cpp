// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QLoggingCategory>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

constexpr int patience = 60000; // ms; the machine may be busy

/// The ids 0, 1, …, without references.
Graph unlinked(int count)
{
    Graph graph = chain(count);
    for (QStringList &references : graph) {
        references.clear();
    }
    return graph;
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
        const Graph graph = unlinked(1000);
        DevSite site;
        QVERIFY2(site.open(graph), qPrintable(site.server.errorString()));
        QObject::connect(&site.context, &Context::documentNodeAdded, [&] {
            if (site.order.size() == 500 && site.server.isOwnProcess()) {
                site.server.kill();
            }
        });
        QSignalSpy finished(site.context.loadDocuments(graph.keys()), &LoadRequest::finished);
        const int failures = site.server.isOwnProcess() ? 1 : 0;
        if (failures > 0) {
            QTRY_VERIFY_WITH_TIMEOUT(log.contains("|critical|Document load request failed"_s),
                                     patience);
            QVERIFY(site.context.isBusy());
            QVERIFY2(site.server.start(), qPrintable(site.server.errorString()));
            clock.advance(3s);
        }
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QTRY_VERIFY_WITH_TIMEOUT(!site.context.isBusy(), patience);
        QCOMPARE(faultOf(graph, graph.keys(), site.order), QByteArray());
        QVERIFY(site.context.loadedDocument("999"_s));
        QCOMPARE(site.batches.size(), 40 + failures);
        QStringList asked;
        for (const QStringList &batch : site.batches) {
            QCOMPARE(batch.size(), 25);
            asked << batch;
        }
        asked.removeDuplicates();
        QCOMPARE(asked.size(), 1000);
        QCOMPARE(log.count("|critical|"_s), failures);
        QCOMPARE(log.count("succeeded after 1 failed attempts"_s), failures);
    }

    void aDocumentComesAfterItsReferences()
    {
        LogCapture log;
        Graph graph = unlinked(60);
        graph.insert("list"_s, graph.keys() + "gone"_l);
        DevSite site;
        QVERIFY2(site.open(graph), qPrintable(site.server.errorString()));
        QSignalSpy finished(site.context.loadDocument("list"_s), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QCOMPARE(faultOf(graph, "list"_l, site.order), QByteArray());
        QStringList sizes;
        for (const QStringList &batch : site.batches) {
            sizes << QString::number(batch.size());
        }
        QCOMPARE(sizes, "1 25 25 11"_l); // 60, and the one that does not exist
        QVERIFY(site.context.loadedDocument("list"_s)->revision().startsWith("1-"_s));
        QVERIFY(log.contains("|info|Loaded 1 documents: 0 cached, 1 remote"_s));
    }

    void thePasswordOpensTheDatabaseAndIsNeverLogged()
    {
        QLoggingCategory::setFilterRules("vorrel.*=true"_s);
        LogCapture log;
        DevSite site("reader"_s, "pass:w/ö rd%"_s);
        QVERIFY2(site.open("a:b"_graph), qPrintable(site.server.errorString()));
        QUrl url = site.server.serviceUrl();
        const QString password = url.password(QUrl::FullyDecoded);
        if (password.isEmpty()) {
            QSKIP("The server that VORREL_TEST_URL names needs no password");
        }
        QSignalSpy finished(site.context.loadDocument("a"_s), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QVERIFY(site.context.loadedDocument("a"_s));
        QVERIFY(log.contains("|debug|"_s));
        const QStringList forms { password, url.password(QUrl::FullyEncoded),
                                  QString::fromLatin1(QUrl::toPercentEncoding(password)),
                                  QString::fromLatin1(
                                      (url.userName() + ":"_s + password).toUtf8().toBase64()) };
        url.setPassword(password + "x"_s);
        site.context.setServiceUrl(url);
        site.context.loadDocument("c"_s);
        QTRY_VERIFY_WITH_TIMEOUT(log.contains("|critical|Document load request failed with HTTP "
                                              "status 401"_s),
                                 patience);
        for (const QString &form : forms) {
            QVERIFY2(!log.contains(form),
                     qPrintable(log.lines().filter(form).join(QLatin1Char('\n'))));
        }
        QLoggingCategory::setFilterRules(QString());
    }
};

QTEST_GUILESS_MAIN(tst_Loading)
#include "tst_loading.moc"
