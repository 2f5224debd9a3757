// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/graph.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/util/message.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// References, the edges between nodes that follow from them, and all that walks along these.
class tst_Graph : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_context = std::make_unique<TestContext>(); }

    void textsAreReferencesOrStayTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("id");
        QTest::addColumn<int>("type");
        QTest::newRow("document") << "$ref(0,abc-1.2)"_s << QByteArray("abc-1.2") << 0;
        QTest::newRow("another") << "$ref(2147483647,a_B)"_s << QByteArray("a_B") << 2147483647;
        for (const QString &text :
             "$ref(x,abc)|$ref(99999999999,abc)|$ref(2147483648,a)|$ref(-1,a)|$ref(0,)|$ref(,a)|"
             "$ref(0,a b)|$ref(0,a)\n|$ref(0,a))| $ref(0,a)|$ref(0,ä)|$ref(|$REF(0,a)"_lines) {
            QTest::newRow(qPrintable(text)) << text << QByteArray() << -1;
        }
    }
    void textsAreReferencesOrStayTexts()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, id);
        QFETCH(int, type);
        QCOMPARE(LinkedDocument::referenceData(text), std::make_tuple(id, type));
        QCOMPARE(LinkedDocument::isReference(text), text.startsWith("$ref("_s));
        m_context->create("abc-1.2"_s);
        m_context->recording = true;
        Station *a = m_context->load("a"_s, withField(text));
        QVERIFY(a->setStructValue("s"_s, "g"_s, text));
        QCOMPARE(storedReferences(a), type == 0 ? "abc-1.2"_l : ""_l);
        m_context->undo(); // leaves the first of the two
        QCOMPARE(a->getStructValue("s"_s, "f"_s), QJsonValue(text));
        QCOMPARE(a->attached().size(), type == 0 ? 1 : 0);
        a->setStructValue("s"_s, "f"_s, 5);
        QVERIFY(a->attached().isEmpty());
    }

    void loadedReferencesAreAttachedLater()
    {
        m_context->store("b"_s);
        Station *a = m_context->load("a"_s, withField("$ref(0,b)"_s));
        const Station *lost = m_context->load("lost"_s, withField("$ref(0,unknown)"_s));
        QVERIFY(!m_context->isBuilt("b"));
        QCOMPARE(storedReferences(a) + storedReferences(lost), "b unknown"_l);
        processEvents();
        Station *b = m_context->find("b"_s);
        QCOMPARE(a->attached(), QList<Document *> { b });
        QVERIFY(lost->attached().isEmpty() && !a->isDirty());
        reload(a, withField("$ref(0,a)"_s)); // stored data is not checked
        QCOMPARE(storedReferences(a), "a"_l);
        QVERIFY(b->referencingDocuments().isEmpty() && a->isComplete());
    }

    void edgesFollowLinksAndReferences()
    {
        storeGraph("a:b b c|b|c|d|e"_graph); // the pair a and b twice
        Station *a = m_context->find("a"_s);
        a->d->note.set(a->newNote("inline"_s));
        a->d->note.get()->setStation(m_context->find("d"_s));
        a->setStructValue("s"_s, "f"_s, "$ref(0,e)"_s);
        QCOMPARE(edgesOf("a"), ""_l); // they follow later
        QTRY_COMPARE(edgesOf("a"), "b c d e"_l);
        a->d->note.set(nullptr);
        a->setStructValue("s"_s, "f"_s, QJsonValue::Null);
        QTRY_COMPARE(edgesOf("a"), "b c"_l);

        DocumentNode *from = m_context->documentNode(QByteArray("a"));
        DocumentNode *to = m_context->documentNode(QByteArray("b"));
        m_context->linkDocuments(from, to); // takes the place of the first edge
        QCOMPARE(to->incoming().size(), 1);
        m_context->unlinkDocuments(from, to);
        m_context->unlinkDocuments(from, to);
        m_context->linkDocuments(from, m_context->store("unbuilt"_s));
        QCOMPARE(edgesOf("a"), "c"_l);
        delete m_context->find("c"_s); // around the Context
        QCOMPARE(edgesOf("a"), ""_l);
    }

    void storedCyclesLoadAndAreReported()
    {
        for (const int length : { 1, 2, 3, 1000 }) {
            init();
            storeGraph(chain(length, "0"_l));
            Station *first = m_context->find("0"_s);
            QTRY_VERIFY(first->isComplete());
            QCOMPARE(ownDocuments(m_context->documents()).size(), length);
            QVERIFY(!m_context->hasLocalChanges() && !first->subtreeRevision().isEmpty());
            // Whoever does not lie on it may point at it; whoever does gets told.
            const QSignalSpy messages(vo::util::Message::instance(), &vo::util::Message::sent);
            const Station *outside = m_context->create("outside"_s);
            QVERIFY(!outside->performCycleCheck(first) && !outside->performCycleCheck(nullptr));
            QCOMPARE(messages.count(), 0);
            first->setLabel("first"_s);
            QVERIFY(first->performCycleCheck(first->next()));
            QCOMPARE(messages.count(), 1);
            QCOMPARE(messages[0][0].toString(), "vorrel.error.DependencyCycle"_s);
            const auto parameters = messages[0][1].value<QMap<QString, QVariant>>();
            QCOMPARE(parameters["cycle"_s].toList().size(), 3); // the source around all with labels
            first->setNext(nullptr);                            // the way out
            QVERIFY(!outside->performCycleCheck(first));
        }
    }

    void walksEndInTime_data()
    {
        QTest::addColumn<Graph>("graph");
        Graph ladder; // with 2^60 ways
        for (int step = 0; step < 60; ++step) {
            const QStringList next { QString::number(step + 1), "x%1"_s.arg(step + 1) };
            ladder.insert(QString::number(step), next);
            ladder.insert("x%1"_s.arg(step), next);
        }
        QTest::newRow("ladder") << ladder;
        QTest::newRow("chain") << chain(100000);
    }
    void walksEndInTime()
    {
        QFETCH(Graph, graph);
        storeGraph(graph);
        Station *first = m_context->find("0"_s);
        m_context->finishIncubation();
        QVERIFY(first->isComplete());
        QVERIFY(!m_context->create("outside"_s)->performCycleCheck(first));
        QCOMPARE(first->subtreeRevision().size(), 32);
    }

    void readAccessFlowsAlongEdges_data()
    {
        QTest::addColumn<Graph>("graph");
        QTest::addColumn<QString>("asked"); // first
        for (const QString &asked : "0 1 2"_l) {
            QTest::newRow(qPrintable("ring, asked at "_s + asked)) << chain(3, "0"_l) << asked;
        }
        QTest::newRow("chain") << chain(10000) << "9999"_s;
    }
    void readAccessFlowsAlongEdges()
    {
        QFETCH(Graph, graph);
        QFETCH(QString, asked);
        graph.insert("outside"_s, "0"_l);
        storeGraph(graph);
        m_context->defaultLevel = Document::NoAccess;
        for (const QString &id : graph.keys()) {
            m_context->find(id)->updateDependencies();
        }
        const Station *station = m_context->find(asked);
        QCOMPARE(station->accessLevel(), Document::NoAccess); // they hold each other only
        m_context->setLevel("outside"_s, Document::ReadAccess);
        QTRY_COMPARE(station->accessLevel(), Document::ReadAccess);
        QVERIFY(station->implicitReadAccess());
        if (graph.value("2"_s).isEmpty()) { // no ring, whose stations keep each other readable
            delete m_context->find("outside"_s);
            QTRY_COMPARE(station->accessLevel(), Document::NoAccess);
        }
    }

    void remotelyRemovedDocumentsAreLetGo()
    {
        const LogCapture log;
        const std::pair<int, int> levels[] { { 2, 2 }, { 2, 1 }, { 1, 2 }, { 0, 0 } };
        for (const auto &[targetLevel, referrerLevel] : levels) { // 1 forbids the deletion
            init();
            const QPointer<Station> target(m_context->load("b"_s));
            Station *a = m_context->load("a"_s, R"j({"next": "b", "exits": {"x": "b"}, "note":
                {"type": "note", "station": "b"}, ":data": {"s:s": {"f": "$ref(0,b)"}}})j"_json);
            processEvents();
            m_context->setLevel("b"_s, Document::AccessLevel(targetLevel));
            m_context->setLevel("a"_s, Document::AccessLevel(referrerLevel));
            processEvents();
            a->updateDependencies();
            const QSignalSpy removed(m_context.get(), &Context::documentRemoved);
            m_context->removeDocument(target);
            m_context->removeDocument(target); // the change feed may tell it twice
            processEvents();
            QVERIFY(!target && !m_context->isLoaded("b"_s) && removed.count() == 1);
            QVERIFY(edgesOf("a").isEmpty() && storedReferences(a).isEmpty());
            QVERIFY(!a->next() && !a->d->note.get()->station() && a->d->exits.get().isEmpty());
            // The force that was needed ends with it. What is dirty stays readable.
            QCOMPARE(int(a->accessLevel()), std::max(referrerLevel, 1));
        }
    }

    void randomEditsKeepBothEndsOfEachLink()
    {
        const auto seed = QRandomGenerator::global()->generate();
        const QByteArray trace = "seed " + QByteArray::number(seed);
        QRandomGenerator random(seed);
        const LogCapture log;
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        for (int step = 1; step <= steps; ++step) {
            randomEdit(random);
            if (step % 50 > 0) {
                continue;
            }
            processEvents();
            for (Document *document : ownDocuments(m_context->documents())) {
                for (const Document *source : document->referencingDocuments()) {
                    QVERIFY2(source && source->attached().contains(document), trace);
                }
                for (const Document *target : document->attached()) {
                    QVERIFY2(target && target->referencingDocuments().contains(document), trace);
                }
                static_cast<Station *>(document)->updateDependencies();
                const QStringList references = storedReferences(document);
                for (const QString &id : edgesOf(document->id())) {
                    QVERIFY2(references.contains(id), trace);
                }
            }
        }
    }

private:
    static QJsonObject withField(const QString &text)
    {
        return { { ":data"_s, QJsonObject { { "s:s"_s, QJsonObject { { "f"_s, text } } } } } };
    }

    static QStringList storedReferences(const Document *document)
    {
        return document->serialize()["references"_s].toVariant().toStringList();
    }

    /// Each station has one reference as a link and the others as exits.
    void storeGraph(const Graph &graph)
    {
        for (auto it = graph.begin(); it != graph.end(); ++it) {
            QJsonObject exits;
            for (const QString &id : it.value().mid(1)) {
                exits.insert(id, id);
            }
            m_context->store(it.key(), { { "next"_s, it.value().value(0) }, { "exits"_s, exits } });
        }
    }

    [[nodiscard]] QStringList edgesOf(const QByteArray &id) const
    {
        QStringList ids;
        for (const DocumentEdge *edge : m_context->documentNode(id)->outgoing()) {
            ids += QString::fromLatin1(edge->target->id());
        }
        ids.sort();
        return ids;
    }

    void randomEdit(QRandomGenerator &random)
    {
        const auto name = [&] { return QString::number(random.bounded(8)); };
        const QString id = name();
        const QString key = name();
        Station *target = m_context->find(name());
        Station *a = m_context->find(id) ? m_context->find(id) : m_context->create(id);
        Note *note = a->newNote(key);
        const std::function<void()> edits[] {
            [=] { delete a; },
            [=] { a->remove(); },
            [=] { m_context->removeDocument(id); },
            [=] { m_context->undo(); },
            [=] { m_context->clearChanges(); },
            [=] { m_context->recording = true; },
            [=] { a->setNext(target); },
            [=] { a->d->exits.insert(key, target); },
            [=] { a->d->notes.insert(note, 0) && note->setStation(target); },
            [=] { a->setStructValue("s"_s, key, LinkedDocument::encodeReference(target)); },
        };
        edits[random.bounded(int(std::size(edits)))]();
    }

    std::unique_ptr<TestContext> m_context;
};

QTEST_GUILESS_MAIN(tst_Graph)
#include "tst_graph.moc"
