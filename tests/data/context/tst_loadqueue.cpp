// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/tableloader.h"

#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/loadrequest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_LoadQueue : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void referencedDocumentsComeFirstAndCyclesEnd_data()
    {
        QTest::addColumn<Graph>("graph");
        QTest::addColumn<QStringList>("wanted");
        QTest::newRow("alone") << "a"_graph
                               << "a"_l;
        QTest::newRow("chain") << "a:b|b:c|c"_graph
                               << "a"_l;
        QTest::newRow("chain wanted at once") << "a:b|b:c|c"_graph
                                              << "a b c"_l;
        QTest::newRow("long way round") << "a:b e|b:c|c:d|d:e|e"_graph
                                        << "a"_l;
        QTest::newRow("not found") << "a:gone b|b:lost"_graph
                                   << "a"_l;
        QTest::newRow("repeated, empty")
            << Graph { { "a"_s, { "b"_s, ""_s, "b"_s } }, { "b"_s, {} } } << "a"_l;
        QTest::newRow("itself") << "a:a b|b"_graph
                                << "a"_l;
        QTest::newRow("two") << "a:b|b:a"_graph
                             << "a"_l;
        QTest::newRow("three") << "a:b|b:c|c:a"_graph
                               << "a b c"_l;
        QTest::newRow("way in and out") << "i:a|a:b|b:c o|c:a|o:p|p"_graph
                                        << "i"_l;
        QTest::newRow("two that share one") << "a:b c|b:a|c:a"_graph
                                            << "c"_l;
        QTest::newRow("a thousand") << chain(1000, "0"_l) << QStringList(chain(1000).keys());
    }
    void referencedDocumentsComeFirstAndCyclesEnd()
    {
        QFETCH(Graph, graph);
        QFETCH(QStringList, wanted);
        LogCapture log;
        QueueFixture fixture(graph);
        fixture.want(wanted);
        QVERIFY(fixture.finishLoading(10));
        QCOMPARE(faultOf(graph, wanted, fixture.order), QByteArray());
        QCOMPARE(fixture.loader->asked.removeDuplicates(), 0);
        QVERIFY(fixture->loadQueue()->wantedDocuments().isEmpty());
        const int selfReferences = graph.value("a"_s).contains("a"_s) ? 1 : 0;
        QVERIFY(log.count("|warning|"_s) <= 2); // however many references close cycles
        QCOMPARE(log.count("loadqueue|warning|Document \"a\" references itself"_s), selfReferences);
    }

    void aLongChainNeedsNoRecursion()
    {
        LogCapture log;
        constexpr int length = 10000;
        QueueFixture fixture(chain(length));
        fixture.loader->cached = { "0"_s, "7"_s };
        fixture.loader->held = { QString::number(length - 1) }; // so that all others have to wait
        fixture.want(chain(length).keys());
        fixture.tick();
        QVERIFY(fixture.order.isEmpty());
        fixture.loader->release(QString::number(length - 1));
        QVERIFY(fixture.finishLoading());
        QCOMPARE(fixture.order.size(), length);
        for (int i = 0; i < length; ++i) {
            QCOMPARE(fixture.order.at(i), QString::number(length - 1 - i));
        }
        QVERIFY(log.contains("vorrel.data.loadqueue|info|Loaded 9999 documents: 2 cached, "
                             "9997 remote in "_s));
    }

    void aDocumentWaitsForOneMissingReference()
    {
        LogCapture log;
        QueueFixture fixture("a:b c d|b|c|d"_graph);
        fixture.loader->held = { "c"_s };
        fixture.want("a"_l);
        for (int i = 0; i < 5; ++i) {
            fixture.tick();
        }
        QVERIFY(!fixture->isLoaded("a"_s) && fixture->isBusy());
        QVERIFY(fixture->isLoaded("b"_s)); // waits for nothing, so not for a tick either
        QCOMPARE(fixture.loader->asked.count("c"_s), 1);
        QCOMPARE(fixture->loadQueue()->wantedDocuments(), QSet<QString>({ "a"_s, "c"_s }));
        fixture.loader->release("c"_s);
        QVERIFY(fixture.finishLoading(3));
        QCOMPARE(fixture.order.constLast(), "a"_s);
        QVERIFY(log.contains("Loaded 1 documents: 0 cached, 1 remote"_s)); // the one that waited
    }

    void idsThatNoDocumentCanHaveAreNotFound()
    {
        LogCapture log;
        // Latin-1 makes "?" of it.
        QueueFixture fixture({ { "a"_s, { "日"_s, ""_s } }, { "日"_s, {} }, { ""_s, {} } });
        QSignalSpy notFound(fixture->loadQueue(), &LoadQueue::documentNotFound);
        fixture.want({ "a"_s, ""_s });
        QVERIFY(fixture.finishLoading(5));
        QCOMPARE(fixture.loader->asked, "a"_l);
        QCOMPARE(notFound, QList<QVariantList>({ { "日"_s } }));
        // A loader that brings them all the same is not listened to.
        Q_EMIT fixture.loader->loaded(""_s, { { "_id"_s, ""_s } });
        Q_EMIT fixture.loader->loaded("日"_s, { { "_id"_s, "日"_s } });
        processEvents();
        QCOMPARE(fixture.order, "a"_l);
        QCOMPARE(log.count("vorrel.data.loadqueue|warning|"_s), 3);
    }

    void loadingRisesForOneTickAtLeast()
    {
        QueueFixture fixture;
        QSignalSpy changes(fixture->loadQueue(), &LoadQueue::loadingChanged);
        fixture.want({});
        fixture.want({});
        QVERIFY(fixture->loadQueue()->isLoading());
        QCOMPARE(changes.size(), 1);
        fixture.tick();
        fixture.tick();
        QVERIFY(!fixture->loadQueue()->isLoading());
        QCOMPARE(changes.size(), 2);
    }

    void aFailedIdIsOfferedAgainAtTheNextTick()
    {
        QueueFixture fixture("a"_graph);
        fixture.loader->failures.insert("a"_s, 2);
        fixture.want("a"_l);
        for (int tick = 1; tick <= 3; ++tick) {
            fixture.tick();
            QCOMPARE(fixture.loader->asked.size(), tick);
        }
        QCOMPARE(fixture.order, "a"_l);
    }

    void loadersAreAskedByPriorityAndReplaceEachOther()
    {
        QueueFixture fixture("a|b|e|f"_graph);
        auto *later = new TableLoader(fixture.context(), "c|d"_graph, 2);
        auto *first = new TableLoader(fixture.context(), "a"_graph, 0);
        fixture->loadQueue()->addLoader(later);
        fixture->loadQueue()->addLoader(first);
        first->declined = { "b"_s, "c"_s, "d"_s };
        fixture.loader->declined = { "c"_s, "d"_s };
        later->declined = { "d"_s };
        fixture.want("a b c d"_l);
        fixture.tick();
        fixture.tick();
        QCOMPARE(first->asked + fixture.loader->asked + later->asked, "a b c"_l);
        QVERIFY(fixture->isBusy()); // nobody takes d, so it stays wanted
        later->declined.clear();
        QVERIFY(fixture.finishLoading(3));
        QCOMPARE(later->asked, "c d"_l);
        // What a loader that goes has not answered is asked of the others.
        first->held = { "e"_s };
        fixture.want("e"_l);
        fixture.tick();
        fixture->loadQueue()->removeLoader(first);
        QVERIFY(fixture.finishLoading(3));
        auto *another = new TableLoader(fixture.context(), {}, 0);
        another->held = { "f"_s };
        fixture->loadQueue()->addLoader(another);
        fixture.want("f"_l);
        fixture.tick();
        delete another;
        QVERIFY(fixture.finishLoading(3));
        QCOMPARE(fixture.loader->asked, "b e f"_l);
    }

    void aLoaderMayAnswerAtOnce()
    {
        struct Hasty : Loader
        {
            using Loader::Loader;
            bool load(const QString &id) override
            {
                Q_EMIT notFound(id);
                return true;
            }
        };
        QueueFixture fixture;
        fixture->loadQueue()->addLoader(new Hasty(0, fixture.context()));
        QSignalSpy notFound(fixture->loadQueue(), &LoadQueue::documentNotFound);
        for (int round = 1; round <= 2; ++round) {
            fixture.want("a"_l);
            QVERIFY(fixture.finishLoading(5));
            QCOMPARE(notFound.size(), round);
        }
    }

    void anotherQueueTakesOverWhatIsWanted()
    {
        LogCapture log;
        QueueFixture fixture("a:b|b"_graph);
        const QPointer<LoadQueue> former = fixture->loadQueue();
        fixture.loader->held = { "b"_s };
        QSignalSpy finished(fixture->loadDocuments("a gone"_l), &LoadRequest::finished);
        QSignalSpy busy(fixture.context(), &Context::busyChanged);
        fixture.tick();
        fixture.tick(); // a waits, b is fetched
        fixture.renewQueue("a:b|b"_graph);
        fixture->setLoadQueue(fixture->loadQueue()); // the same one: nothing happens
        QVERIFY(fixture->isBusy());
        processEvents();
        QVERIFY(!former && !fixture.loader);
        QVERIFY(fixture.finishLoading(5));
        QCOMPARE(fixture.order, "b a"_l);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(busy.size(), 2);
        QVERIFY(!fixture->isBusy());
    }

    void slotsMayBeSlowAndLoadMoreDuringInstancing()
    {
        LogCapture log;
        QueueFixture fixture("a:b|b:a|c:d|d:c|e"_graph);
        QSignalSpy changes(fixture->loadQueue(), &LoadQueue::loadingChanged);
        QStringList events;
        QObject::connect(fixture.context(), &Context::documentNodeAdded, [&](const QString &id) {
            events << id;
            QMetaObject::invokeMethod(
                fixture.context(), [&] { events << "turn"_s; }, Qt::QueuedConnection);
            useUpTheSlice();
            QVERIFY(fixture->loadQueue()->isLoading());
            fixture->loadDocuments({ id, id == "b"_s ? "c"_s : "gone"_s });
        });
        QObject::connect(fixture->loadQueue(), &LoadQueue::documentNotFound,
                         [&] { fixture.want("e"_l); });
        fixture.want("a"_l);
        QVERIFY(fixture.finishLoading(20));
        QCOMPARE(events.at(1), "turn"_s); // between a and b
        QCOMPARE(fixture.order.size(), 5);
        QCOMPARE(changes.size(), 2);
    }

    void randomGraphsLoadCompletelyAndInOrder()
    {
        LogCapture log;
        const int steps = qEnvironmentVariableIntValue("VORREL_TEST_STEPS");
        int left = steps > 0 ? steps : 10000; // a step is a document
        for (quint32 seed = 1; left > 0; ++seed) {
            QRandomGenerator random(seed);
            const int size = random.bounded(2, 80);
            left -= size;
            const Graph graph = randomGraph(random, size);
            QueueFixture fixture(graph);
            TableLoader *loader = fixture.loader;
            QStringList wanted;
            QList<QPointer<LoadRequest>> requests;
            for (int round = random.bounded(1, 6); round > 0; --round) {
                for (int i = random.bounded(size); i > 0; --i) {
                    loader->failures.insert(QString::number(random.bounded(size)), i % 4);
                }
                wanted << QString::number(random.bounded(size));
                requests << fixture->loadDocument(wanted.constLast());
                for (int ticks = random.bounded(4); ticks > 0; --ticks) {
                    fixture.tick();
                }
                if (random.bounded(4) == 0) {
                    loader = fixture.renewQueue(graph);
                }
            }
            const bool finished = fixture.finishLoading();
            processEvents();
            requests.removeAll(nullptr); // those that ended
            QByteArray fault = faultOf(graph, wanted, fixture.order);
            QVERIFY2(finished && requests.isEmpty() && fault.isEmpty(),
                     fault.append(" with seed ").append(QByteArray::number(seed)));
        }
    }
};

QTEST_GUILESS_MAIN(tst_LoadQueue)
#include "tst_loadqueue.moc"
