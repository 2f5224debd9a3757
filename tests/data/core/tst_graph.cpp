// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/linkdocuments.h"
#include "support/logcapture.h"

#include <vorrel/util/message.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

QString edgesOf(const GraphContext &context, const QString &id)
{
    const DocumentNode *node = context.documentNode(id.toLatin1());
    QStringList ids;
    for (const DocumentEdge *edge : node->outgoing()) {
        ids.append(QString::fromLatin1(edge->target->id()));
    }
    ids.sort();
    return ids.join(QLatin1Char(' '));
}

QString number(int i)
{
    return QString::number(i);
}

// Stored documents 0 to count - 1, each pointing at the next one.
void storeChain(GraphContext &context, int count, const QString &last = {})
{
    for (int i = 0; i < count; ++i) {
        context.store(number(i), { { "next"_q, i + 1 < count ? number(i + 1) : last } });
    }
}

} // namespace

class tst_Graph : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void edgesFollowPropertiesAndReferences();
    void edgesAreTakenAlongWithTheirNodes();
    void slotsOfLinksMayDestroyDocuments();
    void linkingNeedsBuiltDocuments();
    void readAccessFollowsEdges();
    void readAccessGoesAroundCircles();
    void readAccessFollowsLongChains();
    void storedCyclesLoadAndAreReported_data();
    void storedCyclesLoadAndAreReported();
    void longChainsEndInTime();
    void laddersEndInTime();
    void remotelyRemovedDocumentsAreLetGo_data();
    void remotelyRemovedDocumentsAreLetGo();
    void removedIdsMayComeBack();
};

void tst_Graph::edgesFollowPropertiesAndReferences()
{
    GraphContext context;
    for (const char *id : { "b", "c", "d", "e" }) {
        context.station(QLatin1String(id));
    }
    context.store("unbuilt"_q);
    Station *a = context.station("a"_q);
    QSignalSpy linked(&context, &Context::documentLinked);
    QSignalSpy unlinked(&context, &Context::documentUnlinked);
    a->setNext(context.find("b"_q));
    a->d->exits.insert("x"_q, context.find("b"_q));
    a->d->exits.insert("y"_q, context.find("c"_q));
    Note *note = a->newNote("inline"_q);
    a->d->notes.insert(note, -1);
    note->setStation(context.find("d"_q));
    a->setStructValue("s"_q, "f"_q, "$ref(0,e)"_q);
    QCOMPARE(edgesOf(context, "a"_q), QString()); // they follow later
    QTRY_COMPARE(edgesOf(context, "a"_q), "b c d e"_q);
    QCOMPARE(linked.count(), 4); // one for each pair
    QVERIFY(linked.contains({ QByteArray("a"), QByteArray("d") }));

    a->setNext(nullptr);
    note->remove();
    a->setStructValue("s"_q, "f"_q, QJsonValue::Null);
    QTRY_COMPARE(edgesOf(context, "a"_q), "b c"_q);
    QCOMPARE(linked.count(), 4);
    QCOMPARE(unlinked.count(), 2);
    QCOMPARE(context.documentNode(QByteArray("b"))->incoming().size(), 1);

    // A second edge for a pair takes the place of the first.
    DocumentNode *from = context.documentNode(QByteArray("a"));
    DocumentNode *to = context.documentNode(QByteArray("b"));
    context.linkDocuments(from, to);
    QCOMPARE(edgesOf(context, "a"_q), "b c"_q);
    QCOMPARE(to->incoming().size(), 1);
    context.unlinkDocuments(from, to);
    context.unlinkDocuments(from, to);
    QCOMPARE(unlinked.count(), 4);
    QVERIFY(to->incoming().isEmpty());
}

void tst_Graph::edgesAreTakenAlongWithTheirNodes()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Station *c = context.station("c"_q);
    a->setNext(b);
    b->setNext(c);
    a->updateDependencies();
    b->updateDependencies();
    QCOMPARE(edgesOf(context, "a"_q), "b"_q);
    b->setNext(a); // refused, it would close a cycle
    context.removeDocument(b);
    settle();
    QCOMPARE(edgesOf(context, "a"_q), QString());
    QVERIFY(context.documentNode(QByteArray("c"))->incoming().isEmpty());
    a->setNext(c);
    a->updateDependencies();
    delete c; // around the Context
    settle();
    QCOMPARE(edgesOf(context, "a"_q), QString());
    QVERIFY(!context.isLoaded("c"_q));
}

void tst_Graph::slotsOfLinksMayDestroyDocuments()
{
    for (const char *signal : { "documentLinked", "documentUnlinked" }) {
        for (const char *victim : { "a", "b", "c" }) {
            GraphContext context;
            Station *a = context.station("a"_q);
            a->setNext(context.station("b"_q));
            a->d->exits.insert("x"_q, context.station("c"_q));
            a->updateDependencies();
            const SignalTrap trap(&context, signal,
                                  [&] { delete context.find(QLatin1String(victim)); });
            a->d->exits.insert("y"_q, context.station("d"_q));
            a->d->exits.insert("z"_q, context.station("e"_q));
            a->setNext(nullptr);
            a->d->exits.remove("x"_q);
            a->updateDependencies();
            settle();
            QVERIFY(!context.find(QLatin1String(victim)));
        }
    }
}

void tst_Graph::linkingNeedsBuiltDocuments()
{
    GraphContext context;
    context.station("a"_q);
    DocumentNode *built = context.documentNode(QByteArray("a"));
    DocumentNode *unbuilt = context.store("b"_q);
    QSignalSpy linked(&context, &Context::documentLinked);
    QSignalSpy unlinked(&context, &Context::documentUnlinked);
    context.linkDocuments(built, unbuilt);
    context.linkDocuments(unbuilt, built);
    context.unlinkDocuments(unbuilt, built);
    QVERIFY(!context.isBuilt("b"_q) && built->outgoing().isEmpty() && built->incoming().isEmpty());
    QCOMPARE(linked.count() + unlinked.count(), 0);
}

void tst_Graph::readAccessFollowsEdges()
{
    GraphContext context;
    context.defaultLevel = Document::NoAccess;
    context.levels.insert("a", Document::ReadAccess);
    context.store("c"_q, R"({"title": {"type": "langstring", "items": {"de": "C"}}})"_o);
    context.store("b"_q, R"({"next": "c"})"_o);
    context.store("other"_q);
    Station *a = context.built("a"_q, R"({"next": "b"})"_o);
    settle();
    Station *b = context.find("b"_q);
    Station *c = context.find("c"_q);
    QTRY_COMPARE(c->accessLevel(), Document::ReadAccess);
    QVERIFY(b->implicitReadAccess() && c->implicitReadAccess() && !a->implicitReadAccess());
    QCOMPARE(c->title(), "C"_q);
    QVERIFY(!c->setTitle("x"_q));
    QCOMPARE(context.find("other"_q)->accessLevel(), Document::NoAccess);

    QSignalSpy changed(c, &Document::accessLevelChanged);
    context.setLevel("a"_q, Document::NoAccess);
    QTRY_COMPARE(c->accessLevel(), Document::NoAccess);
    QCOMPARE(changed.count(), 1);
    QVERIFY(c->title().isEmpty() && !c->implicitReadAccess());
}

void tst_Graph::readAccessGoesAroundCircles()
{
    GraphContext context;
    context.defaultLevel = Document::NoAccess;
    context.store("b"_q, R"({"next": "a"})"_o);
    Station *a = context.built("a"_q, R"({"next": "b"})"_o);
    settle();
    Station *b = context.find("b"_q);
    a->updateDependencies();
    b->updateDependencies();
    context.updateAccessLevel();
    settle();
    QCOMPARE(a->accessLevel(), Document::NoAccess);
    QCOMPARE(b->accessLevel(), Document::NoAccess);
    context.setLevel("a"_q, Document::WriteAccess);
    QTRY_COMPARE(b->accessLevel(), Document::ReadAccess);
    QCOMPARE(a->accessLevel(), Document::WriteAccess);
}

void tst_Graph::readAccessFollowsLongChains()
{
    constexpr int length = 10000;
    GraphContext context;
    context.defaultLevel = Document::NoAccess;
    context.levels.insert("0", Document::WriteAccess);
    storeChain(context, length);
    for (int i = 0; i < length; ++i) {
        QVERIFY(context.find(number(i)));
    }
    context.finishIncubation();
    for (int i = 0; i < length; ++i) {
        context.find(number(i))->updateDependencies();
    }
    // Asked from its far end.
    static_cast<void>(context.find(number(length - 1))->accessLevel());
    QTRY_COMPARE(context.find(number(length - 1))->accessLevel(), Document::ReadAccess);
    context.setLevel("0"_q, Document::NoAccess);
    QTRY_COMPARE(context.find(number(length - 1))->accessLevel(), Document::NoAccess);
}

void tst_Graph::storedCyclesLoadAndAreReported_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("itself") << 1;
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
    QTest::newRow("a thousand") << 1000;
}

void tst_Graph::storedCyclesLoadAndAreReported()
{
    QFETCH(int, length);
    GraphContext context;
    storeChain(context, length, "0"_q);
    Station *first = context.find("0"_q);
    QTRY_VERIFY(first->isComplete());
    QCOMPARE(context.documents().size(), length);
    const Station *around = first;
    for (int i = 0; i < length; ++i) {
        around = around->next();
    }
    QCOMPARE(around, first);
    QVERIFY(!context.hasLocalChanges());

    // Whoever does not lie on it may point at it; whoever does gets told.
    QSignalSpy messages(vo::util::Message::instance(), &vo::util::Message::sent);
    Station *outside = context.station("outside"_q);
    QVERIFY(!outside->performCycleCheck(first));
    QVERIFY(!outside->performCycleCheck(nullptr));
    QCOMPARE(messages.count(), 0);
    first->setLabel("first"_q);
    QVERIFY(first->performCycleCheck(first->next()));
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages.at(0).at(0).toString(), "vorrel.error.DependencyCycle"_q);
    const auto parameters = messages.at(0).at(1).value<QMap<QString, QVariant>>();
    QCOMPARE(parameters.value("source"_q).value<QObject *>(), first);
    const QVariantList cycle = parameters.value("cycle"_q).toList();
    QCOMPARE(cycle.size(), 3); // the source around all that have labels
    QVERIFY(!first->subtreeRevision().isEmpty());
    first->setNext(nullptr); // the way out
    QVERIFY(!first->performCycleCheck(outside));
}

void tst_Graph::longChainsEndInTime()
{
    constexpr int length = 100000;
    GraphContext context;
    storeChain(context, length);
    Station *first = context.find("0"_q);
    context.finishIncubation();
    QCOMPARE(context.documents().size(), length);
    QVERIFY(first->isComplete());
    Station *last = context.find(number(length - 1));
    QVERIFY(last->performCycleCheck(first));
    QVERIFY(!last->setNext(first));
    QVERIFY(!context.station("outside"_q)->performCycleCheck(first));
    QVERIFY(!first->subtreeRevision().isEmpty());
    QSet<const LinkedDocument *> dependencies;
    first->d->next.get()->aggregateDependencies(dependencies);
    QCOMPARE(dependencies.size(), 1);
}

// Two ways at each of 60 steps: 2^60 paths.
void tst_Graph::laddersEndInTime()
{
    constexpr int steps = 60;
    GraphContext context;
    for (int i = 0; i < steps; ++i) {
        const QString left = "l"_q + number(i + 1);
        const QString right = "r"_q + number(i + 1);
        const QJsonObject data { { "next"_q, left },
                                 { "exits"_q, QJsonObject { { "x"_q, right } } } };
        context.store("l"_q + number(i), data);
        context.store("r"_q + number(i), data);
    }
    Station *first = context.find("l0"_q);
    context.finishIncubation();
    QVERIFY(first->isComplete());
    QVERIFY(!context.station("outside"_q)->performCycleCheck(first));
    QVERIFY(!first->subtreeRevision().isEmpty());
}

void tst_Graph::remotelyRemovedDocumentsAreLetGo_data()
{
    QTest::addColumn<int>("targetLevel");
    QTest::addColumn<int>("referrerLevel"); // below WriteAccess it forbids the deletion
    QTest::newRow("all may be changed") << 2 << 2;
    QTest::newRow("a referrer forbids it") << 2 << 1;
    QTest::newRow("read only") << 1 << 2;
    QTest::newRow("no access at all") << 0 << 0;
}

void tst_Graph::remotelyRemovedDocumentsAreLetGo()
{
    QFETCH(int, targetLevel);
    QFETCH(int, referrerLevel);
    LogCapture log;
    GraphContext context;
    const QPointer<Station> target(context.built("target"_q));
    Station *a = context.built("a"_q, R"j({"next": "target", "exits": {"x": "target"},
        "note": {"type": "note", "station": "target"},
        ":data": {"s:s": {"f": "$ref(0,target)"}}})j"_o);
    // Its only link lies in an inline document.
    Station *b = context.built("b"_q, R"({"note": {"type": "note", "station": "target"}})"_o);
    settle();
    context.setLevel("target"_q, Document::AccessLevel(targetLevel));
    context.setLevel("a"_q, Document::AccessLevel(referrerLevel));
    context.setLevel("b"_q, Document::AccessLevel(referrerLevel));
    settle();
    a->updateDependencies();
    QSignalSpy removed(&context, &Context::documentRemoved);
    context.removeDocument(target);
    context.removeDocument(target); // the change feed may tell it twice
    QVERIFY(target);                // it outlives the call
    settle();
    QVERIFY(!target);
    QCOMPARE(removed.count(), 1);
    QVERIFY(!context.isLoaded("target"_q));
    QVERIFY(!a->next() && a->exitTexts().isEmpty());
    const QJsonObject stored = a->serialize();
    QVERIFY(stored.value("next"_q).isNull());
    QVERIFY(stored.value("note"_q).toObject().value("station"_q).isNull());
    QVERIFY(stored.value(":data"_q).toObject().value("s:s"_q).toObject().value("f"_q).isNull());
    QVERIFY(!a->attached().contains(nullptr));
    QCOMPARE(edgesOf(context, "a"_q), QString());
    // The force that was needed ends with it. What is dirty stays readable.
    settle();
    QCOMPARE(int(a->accessLevel()), std::max(referrerLevel, 1));
    QCOMPARE(int(b->accessLevel()), std::max(referrerLevel, 1));
}

void tst_Graph::removedIdsMayComeBack()
{
    GraphContext context;
    const QPointer<Station> former(context.station("a"_q));
    Station *b = context.station("b"_q);
    b->setStructValue("s"_q, "f"_q, "$ref(0,a)"_q);
    context.removeDocument(former);
    settle();
    QVERIFY(!former);
    Station *again = context.station("a"_q);
    QVERIFY(again);
    b->setStructValue("s"_q, "f"_q, "$ref(0,a)"_q);
    QCOMPARE(b->attached(), QList<Document *> { again });
    b->updateDependencies();
    QCOMPARE(edgesOf(context, "b"_q), "a"_q);
}

QTEST_GUILESS_MAIN(tst_Graph)
#include "tst_graph.moc"
