// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QLoggingCategory>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {
constexpr int patience = 60000; // ms; the machine may be busy
}

class tst_Loading : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aThousandDocumentsComeThoughTheServerDies()
    {
        ManualClock clock;
        LogCapture log;
        Graph graph = chain(1000);
        for (QStringList &references : graph) {
            references.clear();
        }
        DevSite site;
        QVERIFY2(site.open(graph), qPrintable(site.server.errorString()));
        const int failures = site.server.isOwnProcess() ? 1 : 0;
        QObject::connect(&site.context, &Context::documentNodeAdded, [&] {
            if (site.order.size() == 500 && failures > 0) {
                site.server.kill();
            }
        });
        QSignalSpy finished(site.context.loadDocuments(graph.keys()), &LoadRequest::finished);
        if (failures > 0) {
            QTRY_VERIFY_WITH_TIMEOUT(log.contains("|critical|Document load request failed"_s),
                                     patience);
            QVERIFY2(site.server.start(), qPrintable(site.server.errorString()));
            clock.advance(std::chrono::seconds(3));
        }
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QTRY_VERIFY(!site.context.isBusy());
        QCOMPARE(faultOf(graph, graph.keys(), site.order), QByteArray());
        QVERIFY(site.context.loadedDocument("999"_s)->revision().startsWith("1-"_s));
        QCOMPARE(site.batches.size(), 40 + failures);
        for (const QStringList &batch : site.batches) {
            QCOMPARE(batch.size(), 25);
        }
        QCOMPARE(log.count("|critical|"_s), failures);
        QCOMPARE(log.count("succeeded after 1 failed attempts"_s), failures);
    }

    void thePasswordOpensTheDatabaseAndIsNeverLogged()
    {
        QLoggingCategory::setFilterRules("vorrel.*=true"_s);
        LogCapture log;
        DevSite site("reader"_s, "pass:w/ö rd%"_s);
        QVERIFY2(site.open("a"_graph), qPrintable(site.server.errorString()));
        QUrl url = site.server.serviceUrl();
        const QString password = url.password(QUrl::FullyDecoded);
        if (password.isEmpty()) {
            QSKIP("The server that VORREL_TEST_URL names needs no password");
        }
        site.context.loadDocument("a"_s);
        QTRY_VERIFY_WITH_TIMEOUT(site.context.isLoaded("a"_s), patience);
        const QByteArray credentials = (url.userName() + ":"_s + password).toUtf8();
        const QStringList forms { password, url.password(QUrl::FullyEncoded),
                                  QString::fromLatin1(QUrl::toPercentEncoding(password)),
                                  QString::fromLatin1(credentials.toBase64()) };
        url.setPassword(password + "x"_s);
        site.context.setServiceUrl(url);
        site.context.loadDocument("b"_s);
        QTRY_VERIFY_WITH_TIMEOUT(log.contains("failed with HTTP status 401"_s), patience);
        QVERIFY(log.contains("|debug|"_s));
        for (const QString &form : forms) {
            QVERIFY2(!log.contains(form), qPrintable(form));
        }
        QLoggingCategory::setFilterRules({});
    }
};

QTEST_GUILESS_MAIN(tst_Loading)
#include "tst_loading.moc"
