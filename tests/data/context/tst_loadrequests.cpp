// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/graph.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/signalhook.h"

#include <vorrel/data/context/couchdbloader.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/context/rootdocument.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A database that holds a graph, and the order in which its nodes come.
struct GraphFixture : ContextFixture
{
    explicit GraphFixture(const Graph &graph)
    {
        for (auto it = graph.begin(); it != graph.end(); ++it) {
            store(it.key(), it.value());
        }
        QObject::connect(context(), &Context::documentNodeAdded,
                         [this](const QString &id) { order << id; });
    }

    LogCapture log;
    ManualClock clock;
    QStringList order;
};

/// A database with the documents a and b, and a window on it.
struct RootFixture : GraphFixture
{
    RootFixture()
        : GraphFixture("a|b"_graph)
    {
        root.setContext(context());
    }

    /// What is shown when all is loaded.
    QString shown()
    {
        static_cast<void>(finishLoading());
        processEvents();
        return root.document() ? root.document()->documentId() : QString();
    }

    RootDocument root;
    QSignalSpy changes { &root, &RootDocument::documentChanged };
};

} // namespace

class tst_LoadRequests : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aLongChainNeedsNoRecursion()
    {
        GraphFixture fixture(chain(10000, "9999"_l)); // the last one refers to itself
        fixture->loadDocuments(chain(10000).keys());
        QVERIFY(fixture.finishLoading());
        QCOMPARE(fixture.order.size(), 10000);
        QVERIFY(fixture.order.constFirst() == "9999"_s && fixture.order.constLast() == "0"_s);
        QCOMPARE(fixture.couch().calls().size(), 400);
        QCOMPARE(fixture.log.count("|warning|Document \"9999\" references itself"_s), 1);
    }

    void aDocumentWaitsForOneMissingReference()
    {
        GraphFixture fixture("a:b c|b|c"_graph);
        QSignalSpy changes(fixture->loadQueue(), &LoadQueue::loadingChanged);
        fixture->loadDocument("a"_s);
        fixture.tick();
        fixture.couch().answerNext(R"({"rows":[{"key":"b","doc":{"_id":"b","type":"tag"}}]})");
        for (int i = 0; i < 5; ++i) {
            fixture.tick();
        }
        QVERIFY(!fixture->isLoaded("a"_s) && fixture->isLoaded("b"_s) && fixture->isBusy());
        QCOMPARE(fixture->loadQueue()->wantedDocuments(), QSet<QString>({ "a"_s, "c"_s }));
        fixture.clock.advance(std::chrono::seconds(3));
        QVERIFY(fixture.finishLoading(3));
        QCOMPARE(fixture.order, "b c a"_l);
        QCOMPARE(changes.size(), 2);
        QVERIFY(fixture.log.contains("loadqueue|info|Loaded 1 documents: 0 cached, 1 remote"_s));
    }

    void idsThatNoDocumentCanHaveAreNotFound()
    {
        GraphFixture fixture({ { "a"_s, { "日"_s, ""_s } }, { "日"_s, {} }, { ""_s, {} } });
        QSignalSpy notFound(fixture->loadQueue(), &LoadQueue::documentNotFound);
        fixture->loadQueue()->load({ "a"_s, ""_s });
        QVERIFY(fixture.finishLoading(5));
        QCOMPARE(fixture.couch().calls().size(), 1);
        QCOMPARE(notFound, QList<QVariantList>({ { "日"_s } }));
        auto *loader = new CouchDBLoader(fixture.context());
        fixture->loadQueue()->addLoader(loader);
        Q_EMIT loader->loaded("日"_s, { { "_id"_s, "日"_s } }); // brings it all the same
        processEvents();
        QCOMPARE(fixture.order, "a"_l);
        QCOMPARE(fixture.log.count("vorrel.data.loadqueue|warning|"_s), 2);
    }

    void slotsMayBeSlowAndLoadMoreDuringInstancing()
    {
        GraphFixture fixture("a:b|b:a|c:d|d:c|e"_graph);
        QObject::connect(fixture.context(), &Context::documentNodeAdded, [&](const QString &id) {
            QMetaObject::invokeMethod(
                fixture.context(), [&] { fixture.order << "turn"_s; }, Qt::QueuedConnection);
            useUpTheSlice();
            fixture->loadDocuments({ id, id == "b"_s ? "c"_s : "gone"_s });
        });
        QObject::connect(fixture->loadQueue(), &LoadQueue::documentNotFound,
                         [&] { fixture->loadDocument("e"_s); });
        fixture->loadDocument("a"_s);
        QVERIFY(fixture.finishLoading(20));
        QCOMPARE(fixture.order.at(1), "turn"_s); // between a and b
        QCOMPARE(fixture.order.size(), 10);
    }

    void randomGraphsLoadCompletelyAndInOrder()
    {
        const int steps = qEnvironmentVariableIntValue("VORREL_TEST_STEPS");
        int left = steps > 0 ? steps : 10000; // a step is a document
        for (quint32 seed = 1; left > 0; ++seed) {
            QRandomGenerator random(seed);
            const int size = random.bounded(2, 80);
            left -= size;
            const Graph graph = randomGraph(random, size);
            GraphFixture fixture(graph);
            QStringList wanted;
            QList<QPointer<LoadRequest>> requests;
            for (int round = random.bounded(1, 6); round > 0; --round) {
                fixture.couch().failNext(random.bounded(3), 500);
                wanted << QString::number(random.bounded(size));
                requests << fixture->loadDocument(wanted.constLast());
                for (int ticks = random.bounded(4); ticks > 0; --ticks) {
                    fixture.tick();
                }
                if (random.bounded(4) == 0) { // which takes over what is wanted
                    auto *queue = new LoadQueue(fixture.context());
                    queue->addLoader(new CouchDBLoader(fixture.context()));
                    fixture->setLoadQueue(queue);
                }
            }
            for (int ticks = 0; ticks < 1000 && !fixture.finishLoading(1); ++ticks) {
                fixture.clock.advance(std::chrono::minutes(1));
            }
            processEvents();
            requests.removeAll(nullptr); // those that ended
            const QByteArray fault = faultOf(graph, wanted, fixture.order);
            QVERIFY2(requests.isEmpty() && fault.isEmpty(),
                     fault + " with seed " + QByteArray::number(seed));
        }
    }

    // Requests

    void aRequestFinishesOnceWhenEachIdIsAnswered()
    {
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        fixture.store("torn"_s, "gone"_l);
        fixture.couch().store(R"({"_id":"ship","type":"ship"})"_json);
        fixture.couch().store(R"({"_id":"dead","type":"tag","deleted":true})"_json);
        fixture->addDocumentNode("known", R"({"_id":"known","type":"tag"})"_json);
        QStringList ends;
        for (const QString &ids : "|known|日|a a known gone torn ship dead"_s.split("|"_s)) {
            const LoadRequest *request = fixture->loadDocuments(ids.split(" "_s));
            QObject::connect(request, &LoadRequest::finished, [&, request] {
                ends << QString::number(request->documents().size());
            });
        }
        QVERIFY(ends.isEmpty()); // never from inside the call
        QVERIFY(fixture.finishLoading());
        processEvents();
        QCOMPARE(ends, "0 1 0 3"_l);
        QVERIFY(!fixture->findChild<LoadRequest *>());
        QCOMPARE(log.count("|critical|Creating unknown document: ship"_s), 1);
    }

    void aRequestOutlivesItsDocumentsAndMayDieBeforeThem()
    {
        ContextFixture fixture;
        fixture.store("a"_s);
        QVERIFY(fixture.load("a"_s));
        const QPointer<LoadRequest> request = fixture->loadDocuments("a b"_l);
        QCOMPARE(request->documents().size(), 1);
        fixture->removeDocument("a"_s);
        processEvents();
        QVERIFY(request->documents().isEmpty());
        delete request;
        fixture->addCreationHandler("tag"_s, [&](Document *) { fixture.destroyContext(); });
        const auto *deadly = fixture->loadDocuments("a b"_l);
        QObject::connect(deadly, &LoadRequest::finished,
                         [&] { QVERIFY(deadly->documents().isEmpty()); });
        QVERIFY(fixture.finishLoading());
        processEvents();
        QVERIFY(!fixture.context());
    }

    // Windows on them

    void aRootDocumentShowsItsLastIdOnly()
    {
        RootFixture fixture;
        fixture.root.setDocumentId("a"_s);
        fixture.couch().hold();
        fixture.tick();
        fixture.root.setDocumentId("b"_s);
        fixture.couch().release();
        processEvents();
        QVERIFY(fixture->isLoaded("a"_s) && !fixture.root.document());
        QCOMPARE(fixture.shown(), "b"_s);
        QCOMPARE(fixture.changes.size(), 1);
        fixture.root.setDocumentId("a"_s);
        QVERIFY(!fixture.root.document()); // it is there already, and still comes in a later turn
        QCOMPARE(fixture.shown(), "a"_s);
    }

    void aRootDocumentTakesUpWhatIsMadeHereAndHidesWhatIsDeleted()
    {
        RootFixture fixture;
        fixture.root.setDocumentId("new"_s);
        QCOMPARE(fixture.shown(), ""_s);
        LinkedDocument *document = fixture.create("new"_s, "1-x"_s);
        QCOMPARE(fixture.root.document(), document);
        document->remove();
        QVERIFY(!fixture.root.document());
        LinkedDocument *successor = fixture.create("new"_s);
        processEvents(); // the former one goes
        QVERIFY(successor && fixture.root.document() == successor);
    }

    void aRootDocumentSurvivesItsContextOrLeavesIt()
    {
        RootFixture fixture;
        Context other;
        fixture.root.setDocumentId("a"_s);
        fixture.root.setContext(&other);
        QVERIFY(fixture.create("a"_s)); // ends the request, and is announced
        QCOMPARE(fixture.shown(), ""_s);
        fixture.root.setContext(fixture.context());
        QCOMPARE(fixture.shown(), "a"_s);
        QObject::connect(&fixture.root, &RootDocument::documentChanged, [&] {
            if (Context *context = fixture.root.context()) { // which is being destroyed
                QVERIFY(!context->loadDocument("b"_s) && !context->createDocument("tag"_s));
            }
        });
        fixture.destroyContext();
        QCOMPARE(fixture.changes.size(), 2);
        QVERIFY(!fixture.root.document() && !fixture.root.context());
    }

    void aRootDocumentMayDieInItsSlots()
    {
        const QList<QByteArray> names = signalNames(RootDocument::staticMetaObject);
        for (const QByteArray &name : names) {
            ContextFixture fixture;
            fixture.create("a"_s);
            auto *root = new RootDocument(fixture.context());
            const QPointer<RootDocument> guard(root);
            const SignalHook hook(root, name, [root] { delete root; });
            root->setDocumentId("a"_s);
            if (guard) {
                root->setContext(fixture.context());
            }
            processEvents();
            QVERIFY2(!guard, name);
        }
    }
};

QTEST_GUILESS_MAIN(tst_LoadRequests)
#include "tst_loadrequests.moc"
