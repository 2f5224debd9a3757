// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/loadrequest.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

QStringList idsOf(const LoadRequest *request)
{
    QStringList ids;
    const QList<LinkedDocument *> documents = request->documents();
    for (const LinkedDocument *document : documents) {
        ids << document->documentId();
    }
    ids.sort();
    return ids;
}

} // namespace

class tst_LoadRequest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finishesOnceWhenEachIdIsAnswered_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<QStringList>("documents");
        QTest::addColumn<bool>("asksTheDatabase");
        QTest::newRow("none") << ""_l
                              << ""_l << false;
        QTest::newRow("all known") << "known"_l
                                   << "known"_l << false;
        QTest::newRow("known and new") << "a known"_l
                                       << "a known"_l << true;
        QTest::newRow("repeated") << "a a b a"_l
                                  << "a b"_l << true;
        QTest::newRow("not found") << "gone lost"_l
                                   << ""_l << true;
        QTest::newRow("some not found") << "gone a"_l
                                        << "a"_l << true;
        QTest::newRow("refers to what is not found") << "torn"_l
                                                     << "torn"_l << true;
        QTest::newRow("unknown type") << "a ship"_l
                                      << "a"_l << true;
        QTest::newRow("deleted") << "a dead"_l
                                 << "a"_l << true;
        QTest::newRow("no id") << QStringList(""_s) << ""_l << false;
        QTest::newRow("beyond Latin-1") << "日"_l
                                        << ""_l << false;
    }
    void finishesOnceWhenEachIdIsAnswered()
    {
        QFETCH(QStringList, ids);
        QFETCH(QStringList, documents);
        QFETCH(bool, asksTheDatabase);
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        fixture.store("b"_s);
        fixture.store("torn"_s, "gone"_l);
        fixture.couch().store(R"({"_id":"ship","type":"ship"})"_json);
        fixture.couch().store(R"({"_id":"dead","type":"tag","deleted":true})"_json);
        fixture->addDocumentNode("known", R"({"_id":"known","type":"tag"})"_json);
        const QPointer<LoadRequest> request = fixture->loadDocuments(ids);
        int finished = 0;
        QObject::connect(request, &LoadRequest::finished, [&] {
            ++finished;
            QCOMPARE(idsOf(request), documents);
        });
        QCOMPARE(fixture->loadQueue()->isLoading(), asksTheDatabase);
        QCOMPARE(finished, 0); // never from inside the call
        QVERIFY(fixture.finishLoading());
        processEvents();
        QCOMPARE(finished, 1);
        QVERIFY(!request);
        QCOMPARE(fixture.couch().calls().isEmpty(), !asksTheDatabase);
        QCOMPARE(log.count("vorrel.data|critical|Creating unknown document: ship"_s),
                 ids.count("ship"_s));
        QCOMPARE(log.count("vorrel.data.loadqueue|warning|Not loading the id"_s),
                 ids.count(""_s) + ids.count("日"_s));
    }

    void oneAnswerEndsAllRequestsForIt()
    {
        ContextFixture fixture;
        fixture.store("a"_s);
        fixture.store("made"_s);
        QStringList ends;
        for (const QString &id : "a a gone gone made"_l) {
            QObject::connect(fixture->loadDocument(id), &LoadRequest::finished,
                             [&ends, id] { ends << id; });
        }
        fixture.create("made"_s); // here, before the database answers
        processEvents();
        QCOMPARE(ends, "made"_l);
        QVERIFY(fixture.finishLoading());
        processEvents();
        ends.sort();
        QCOMPARE(ends, "a a gone gone made"_l);
    }

    void finishedMayAskForMore()
    {
        ContextFixture fixture;
        int round = 0;
        std::function<void()> again = [&] {
            if (++round < 4) {
                fixture.store(QString::number(round)); // was not found just now
                QObject::connect(fixture->loadDocuments({ QString::number(round), "gone"_s }),
                                 &LoadRequest::finished, again);
            }
        };
        QObject::connect(fixture->loadDocuments("1 gone"_l), &LoadRequest::finished, again);
        for (int i = 0; i < 5; ++i) {
            QVERIFY(fixture.finishLoading());
            processEvents();
        }
        QCOMPARE(round, 4);
        QVERIFY(fixture->isLoaded("1"_s) && fixture->isLoaded("3"_s));
    }

    void outlivesItsDocumentsAndMayDieBeforeThem()
    {
        ContextFixture fixture;
        fixture.store("a"_s);
        QVERIFY(fixture.load("a"_s));
        const QPointer<LoadRequest> request = fixture->loadDocuments("a b"_l);
        QCOMPARE(idsOf(request), "a"_l);
        fixture->removeDocument("a"_s);
        processEvents();
        QCOMPARE(idsOf(request), ""_l);
        delete request;
        delete fixture->loadDocuments({});
        QVERIFY(fixture.finishLoading());
    }

    void buildingItsDocumentsMayDestroyTheContext()
    {
        ContextFixture fixture;
        fixture.store("a"_s);
        fixture.store("b"_s);
        fixture->addCreationHandler("tag"_s, [&](Document *) { fixture.destroyContext(); });
        const auto *request = fixture->loadDocuments("a b"_l);
        QObject::connect(request, &LoadRequest::finished, [&] { QCOMPARE(idsOf(request), ""_l); });
        QVERIFY(fixture.finishLoading());
        processEvents();
        QVERIFY(!fixture.context());
    }
};

QTEST_GUILESS_MAIN(tst_LoadRequest)
#include "tst_loadrequest.moc"
