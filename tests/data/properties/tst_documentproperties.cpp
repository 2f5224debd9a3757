// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/linkdocuments.h"
#include "support/logcapture.h"

#include <vorrel/data/properties/langstring.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>

using namespace vo::data;
using namespace vo::test;

namespace {

QString idOf(const Document *document)
{
    return document ? document->documentId() : "null"_q;
}

QString sorted(const QSet<QString> &ids)
{
    QStringList list = ids.values();
    list.sort();
    return list.join(QLatin1Char(' '));
}

QString referencesOf(const Station *station)
{
    QSet<QString> ids;
    station->aggregateReferences(ids);
    return sorted(ids);
}

// A station that was loaded with everything it points at still unbuilt.
const QJsonObject pendingData = R"({"next": "b", "exits": {"east": "b", "west": "c"}, "notes": [
        {"type": "note", "text": "one", "station": "b"}, {"type": "note", "text": "two"}]})"_o;

using Operation = std::function<QString(GraphContext &, Station *)>;

} // namespace

Q_DECLARE_METATYPE(Operation)

class tst_DocumentProperties : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pendingDataIsFinishedByEachOperation_data();
    void pendingDataIsFinishedByEachOperation();
    void pendingDataComesInSlices();
    void storedLinksThatCannotBeFollowedAreNull_data();
    void storedLinksThatCannotBeFollowedAreNull();
    void unknownInlineTypesAreLoggedAndPassedOver();
    void fallbackStandsInAndIsNotStored();
    void deletedTargetsAreLetGo();
    void referrersWithoutWriteAccessForbidDeletion();
    void otherContextsAreRefused();
    void listIndexes_data();
    void listIndexes();
    void mapsMoveWhatTheyHold();
    void editsAreUndoneAndRedone();
    void undoPassesOverWhatIsGone();
    void replacedElementsAreDisposedOf();
    void elementsMayMoveBetweenProperties();
    void inlineDocumentsCannotHoldThemselves();
    void cyclesAreRefusedThroughPendingData();
    void copiesHaveTheirOwnInlineDocuments();
    void slotsMayDestroyAnything();
    void slotsMayEditAgain();
    void documentsMayGoWhileTheyWait();
};

void tst_DocumentProperties::pendingDataIsFinishedByEachOperation_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("expected"); // of the operation and, after all deferred work, again
    const auto row = [](const char *name, const char *expected, Operation operation) {
        QTest::newRow(name) << operation << QString::fromUtf8(expected);
    };
    const auto next = [](Station *a) { return idOf(a->next()); };

    row("link: get", "b", [=](auto &, Station *a) { return next(a); });
    row("link: to JSON", "b", [](auto &, Station *a) { return a->d->next.toJson().toString(); });
    row("link: targets", "b",
        [](auto &, Station *a) { return idOf(a->d->next.referencedDocuments().value(0)); });
    row("link: set", "c", [=](auto &context, Station *a) {
        a->setNext(context.find("c"_q));
        return next(a);
    });
    row("link: clear", "null", [=](auto &, Station *a) {
        a->d->next.clear();
        return next(a);
    });
    row("link: copy", "b", [](auto &context, Station *a) {
        Station *other =
            context.find("other"_q) ? context.find("other"_q) : context.station("other"_q);
        other->d->next.copy(&a->d->next);
        return idOf(other->next());
    });
    row("link: remove the target", "null", [=](auto &context, Station *a) {
        a->d->next.removeDocument(context.find("b"_q));
        return next(a);
    });
    row("references", "b c", [](auto &, Station *a) { return referencesOf(a); });
    row("list: to JSON", "2", [](auto &, Station *a) {
        return QString::number(a->serialize().value("notes"_q).toArray().size());
    });
    row("list: elements", "one two", [](auto &, Station *a) { return a->noteTexts(); });
    row("list: index", "1",
        [](auto &, Station *a) { return QString::number(a->d->notes.indexOf(a->d->notes.at(1))); });
    row("list: insert", "one new two", [](auto &, Station *a) {
        if (a->d->notes.count() == 2) {
            a->insertListElement("notes"_q, a->newNote("new"_q), 1);
        }
        return a->noteTexts();
    });
    row("list: move", "two one", [](auto &, Station *a) {
        if (a->property("moved").isNull()) {
            a->setProperty("moved", a->moveListElement("notes"_q, 0, 1));
        }
        return a->noteTexts();
    });
    row("list: clear", "", [](auto &, Station *a) {
        a->d->notes.clear();
        return a->noteTexts();
    });
    row("list: copy", "one two", [](auto &context, Station *a) {
        Station *other =
            context.find("other"_q) ? context.find("other"_q) : context.station("other"_q);
        other->d->notes.copy(&a->d->notes);
        return other->noteTexts();
    });
    row("map: get", "east:b west:c", [](auto &, Station *a) { return a->exitTexts(); });
    row("map: to JSON", "c", [](auto &, Station *a) {
        return a->d->exits.toJson().toObject().value("west"_q).toString();
    });
    row("map: insert", "east:b north:d west:c", [](auto &context, Station *a) {
        a->d->exits.insert("north"_q, context.find("d"_q));
        return a->exitTexts();
    });
    row("map: remove", "west:c", [](auto &, Station *a) {
        a->d->exits.remove("east"_q);
        return a->exitTexts();
    });
    row("map: rename", "south:b west:c", [](auto &, Station *a) {
        a->d->exits.rename("east"_q, "south"_q);
        return a->exitTexts();
    });
    row("map: clear", "", [](auto &, Station *a) {
        a->d->exits.clear();
        return a->exitTexts();
    });
}

void tst_DocumentProperties::pendingDataIsFinishedByEachOperation()
{
    QFETCH(Operation, operation);
    QFETCH(QString, expected);
    GraphContext context;
    for (const char *id : { "b", "c", "d" }) {
        context.store(QLatin1String(id));
    }
    Station *a = context.built("a"_q, pendingData);
    QVERIFY(!context.isBuilt("b"_q)); // building never builds
    QCOMPARE(operation(context, a), expected);
    settle();
    QCOMPARE(operation(context, a), expected); // nothing came late
}

void tst_DocumentProperties::pendingDataComesInSlices()
{
    GraphContext context;
    context.store("b"_q);
    context.store("c"_q);
    Station *a = context.built("a"_q, pendingData);
    QSignalSpy next(a, &Station::nextChanged);
    QSignalSpy notes(a, &Station::notesChanged);
    QSignalSpy exits(a, &Station::exitsChanged);
    QSignalSpy changed(&context, &Context::documentChanged);
    QVERIFY(!a->isComplete());
    settle();
    QVERIFY(context.isBuilt("b"_q));
    QVERIFY(a->isComplete());
    QCOMPARE(next.count(), 1);
    QCOMPARE(notes.count(), 1);
    QCOMPARE(exits.count(), 1);
    QVERIFY(changed.contains({ QVariant::fromValue<Document *>(a) }));
    QVERIFY(!a->isDirty());
    QCOMPARE(sorted({ idOf(a->attached().value(0)) }).isEmpty(), false);
    QVERIFY(a->attached().contains(context.find("b"_q)));
}

void tst_DocumentProperties::storedLinksThatCannotBeFollowedAreNull_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a built one") << QJsonValue("b"_q) << "b"_q;
    QTest::newRow("one to be built") << QJsonValue("c"_q) << "c"_q;
    QTest::newRow("null") << QJsonValue() << "null"_q;
    QTest::newRow("empty") << QJsonValue(""_q) << "null"_q;
    QTest::newRow("unknown") << QJsonValue("nowhere"_q) << "null"_q;
    QTest::newRow("a number") << QJsonValue(5) << "null"_q;
    QTest::newRow("an object") << QJsonValue(QJsonObject { { "b"_q, 1 } }) << "null"_q;
    QTest::newRow("another class") << QJsonValue("tag"_q) << "null"_q;
    QTest::newRow("another class, to be built") << QJsonValue("tag2"_q) << "null"_q;
    QTest::newRow("an unknown class") << QJsonValue("alien"_q) << "null"_q;
    QTest::newRow("beyond Latin-1") << QJsonValue(QString(QChar(0x20ac))) << "null"_q;
}

void tst_DocumentProperties::storedLinksThatCannotBeFollowedAreNull()
{
    QFETCH(QJsonValue, value);
    QFETCH(QString, expected);
    LogCapture log;
    GraphContext context;
    context.built("b"_q);
    context.store("c"_q);
    context.store("?"_q); // what an id beyond Latin-1 turns into
    context.store("tag"_q, R"({"type": "tag"})"_o)->instantiate();
    context.store("tag2"_q, R"({"type": "tag"})"_o);
    context.store("alien"_q, R"({"type": "alien"})"_o);
    Station *former = context.built("former"_q);
    Station *a = context.station("a"_q);
    a->setNext(former);
    reload(a, { { "next"_q, value }, { "exits"_q, QJsonObject { { "x"_q, value } } } });
    QCOMPARE(idOf(a->next()), expected);
    const QString exits = expected == "null"_q ? QString() : "x:"_q + expected;
    QCOMPARE(a->exitTexts(), exits);
    settle();
    QCOMPARE(idOf(a->next()), expected);
    QVERIFY(former->referencingDocuments().isEmpty());
}

void tst_DocumentProperties::unknownInlineTypesAreLoggedAndPassedOver()
{
    LogCapture log;
    GraphContext context;
    Station *a = context.built("a"_q, R"({"notes": [{"type": "note", "text": "one"}, 5, null,
        {"type": "alien"}, {"type": "remark"}, {"text": "typeless"}, {"type": "note", "text": "two"}],
        "note": {"type": "remark"}})"_o);
    // Whoever saves before they are made stores them as they came.
    QCOMPARE(a->serialize().value("notes"_q).toArray().size(), 7);
    QCOMPARE(a->noteTexts(), "one two"_q);
    QVERIFY(!a->d->note.get());
    QCOMPARE(log.count("Document a holds an inline document of the unknown type \"alien\""_q), 1);
    settle();
    QCOMPARE(a->findChildren<InlineDocument *>().size(), 2);
}

void tst_DocumentProperties::fallbackStandsInAndIsNotStored()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *fallback = context.station("fallback"_q);
    a->d->next.setFallback(fallback);
    QCOMPARE(a->next(), fallback);
    QVERIFY(a->d->next.toJson().isNull());
    QCOMPARE(referencesOf(a), QString());
    QVERIFY(a->attached().contains(fallback));

    context.recording = true;
    a->d->next.clear();
    QVERIFY(context.changes.empty()); // nothing changes, so there is nothing to take back
    a->setNext(context.station("b"_q));
    a->d->next.clear();
    QCOMPARE(a->next(), fallback);
    context.recording = false;

    Station *other = context.station("other"_q);
    a->d->next.setFallback(other);
    QCOMPARE(a->next(), other);
    QVERIFY(a->d->next.toJson().isNull());
    a->remove();
    QVERIFY(!a->next());
}

void tst_DocumentProperties::deletedTargetsAreLetGo()
{
    GraphContext context;
    Station *target = context.built("target"_q);
    Station *a = context.built("a"_q);
    Note *note = a->newNote("inline"_q);
    a->d->notes.insert(note, -1);
    note->setStation(target);
    a->setNext(target);
    a->d->exits.insert("x"_q, target);
    a->setStructValue("s"_q, "f"_q, LinkedDocument::encodeReference(target));
    QCOMPARE(target->referencingDocuments().size(), 2);

    target->remove();
    QVERIFY(target->deleted());
    QVERIFY(!a->next() && !note->station());
    QCOMPARE(a->exitTexts(), QString());
    QVERIFY(a->getStructValue("s"_q, "f"_q).isNull());
    QVERIFY(target->referencingDocuments().isEmpty());
    QCOMPARE(referencesOf(a), QString());
}

void tst_DocumentProperties::referrersWithoutWriteAccessForbidDeletion()
{
    GraphContext context;
    Station *target = context.built("target"_q);
    Station *a = context.built("a"_q);
    Station *b = context.built("b"_q);
    a->setNext(target);
    b->setNext(target);
    context.setLevel("b"_q, Document::ReadAccess);
    b->markClean("2-b"_q, b->changeSequenceNumber(), {});
    settle();
    QCOMPARE(b->accessLevel(), Document::ReadAccess);
    b->d->next.removeDocument(target);
    b->d->next.clear();
    QVERIFY(!b->d->notes.insert(b->newNote("x"_q), -1));
    QVERIFY(!b->d->exits.insert("x"_q, a));
    target->remove();
    QVERIFY(!target->deleted());
    QCOMPARE(a->next(), target);
    QCOMPARE(b->next(), target);
}

void tst_DocumentProperties::otherContextsAreRefused()
{
    GraphContext context;
    auto foreign = std::make_unique<GraphContext>();
    Station *a = context.station("a"_q);
    Station *stranger = foreign->station("stranger"_q);
    Note *note = stranger->newNote("strange"_q);
    auto *text = static_cast<LangString *>(InlineDocument::create("langstring"_q, stranger));
    LogCapture log;
    QVERIFY(!a->setNext(stranger));
    QVERIFY(!a->d->exits.insert("x"_q, stranger));
    QVERIFY(!a->d->note.set(note));
    QVERIFY(!a->d->notes.insert(note, -1));
    QVERIFY(!a->d->title.setLangString(text));
    QCOMPARE(log.count("Cannot set document from different context"_q), 5);
    QVERIFY(a->attached().isEmpty() && stranger->referencingDocuments().isEmpty());
    foreign.reset();
    QVERIFY(!a->next());
}

void tst_DocumentProperties::listIndexes_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("expected"); // of a list "0 1 2"
    const auto row = [](const char *name, const char *expected,
                        std::function<bool(Station *)> operation) {
        const Operation run = [operation](GraphContext &, Station *a) {
            const bool done = operation(a);
            return QString(a->noteTexts() + QLatin1String(done ? " done" : " refused"));
        };
        QTest::newRow(name) << run << QString::fromUtf8(expected);
    };
    constexpr int huge = std::numeric_limits<int>::max();
    constexpr int tiny = std::numeric_limits<int>::min();
    for (const int index : { -1, tiny, 3, 99, huge }) {
        row(qPrintable("insert at "_q + QString::number(index)), "0 1 2 x done",
            [=](Station *a) { return a->insertListElement("notes"_q, a->newNote("x"_q), index); });
    }
    row("insert in front", "x 0 1 2 done",
        [](Station *a) { return a->insertListElement("notes"_q, a->newNote("x"_q), 0); });
    row("insert what is there", "1 2 0 done",
        [](Station *a) { return a->addListElement("notes"_q, a->d->notes.at(0)); });
    row("insert what is there at its place", "0 1 2 refused",
        [](Station *a) { return a->insertListElement("notes"_q, a->d->notes.at(1), 1); });
    row("insert null", "0 1 2 refused",
        [](Station *a) { return a->addListElement("notes"_q, nullptr); });
    row("insert another class", "0 1 2 refused", [](Station *a) {
        return a->addListElement("notes"_q, InlineDocument::create("remark"_q, a))
            || a->addListElement("notes"_q, a);
    });
    row("insert what another property holds", "0 1 2 refused", [](Station *a) {
        Note *note = a->newNote("held"_q);
        a->d->note.set(note);
        return a->addListElement("notes"_q, note);
    });
    for (const int index : { -1, tiny, 3, huge }) {
        row(qPrintable("move to "_q + QString::number(index)), "0 1 2 refused",
            [=](Station *a) { return a->moveListElement("notes"_q, 0, index); });
        row(qPrintable("move from "_q + QString::number(index)), "0 1 2 refused",
            [=](Station *a) { return a->moveListElement("notes"_q, index, 0); });
        row(qPrintable("remove at "_q + QString::number(index)), "0 1 2 refused",
            [=](Station *a) { return a->removeListIndex("notes"_q, index); });
    }
    row("move", "1 2 0 done", [](Station *a) { return a->moveListElement("notes"_q, 0, 2); });
    row("remove at 1", "0 2 refused", [](Station *a) { return a->removeListIndex("notes"_q, 1); });
    row("remove what is not there", "0 1 2 refused",
        [](Station *a) { return a->removeListElement("notes"_q, a->newNote("x"_q)); });
}

void tst_DocumentProperties::listIndexes()
{
    QFETCH(Operation, operation);
    QFETCH(QString, expected);
    GraphContext context;
    Station *a = context.station("a"_q);
    for (int i = 0; i < 3; ++i) {
        a->d->notes.insert(a->newNote(QString::number(i)), -1);
    }
    context.recording = true;
    QCOMPARE(operation(context, a), expected);
    context.undo();
    QCOMPARE(a->noteTexts(), "0 1 2"_q);
    QVERIFY(!a->d->notes.at(-1) && !a->d->notes.at(3));
}

void tst_DocumentProperties::mapsMoveWhatTheyHold()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Station *c = context.station("c"_q);
    QVERIFY(a->d->exits.insert("1"_q, b));
    QVERIFY(!a->d->exits.insert("1"_q, b));
    QVERIFY(a->d->exits.insert(""_q, c));
    QVERIFY(a->d->exits.insert("2"_q, b));
    QCOMPARE(a->exitTexts(), ":c 2:b"_q);
    QVERIFY(a->d->exits.insert("2"_q, c)); // takes the place of the other
    QCOMPARE(a->exitTexts(), "2:c"_q);
    QVERIFY(b->referencingDocuments().isEmpty());
    QVERIFY(!a->d->exits.rename("2"_q, "2"_q) && !a->d->exits.rename("none"_q, "2"_q));
    QVERIFY(!a->d->exits.insert("3"_q, a->newNote("x"_q)));
    QVERIFY(a->d->exits.insert("2"_q, nullptr));
    QVERIFY(!a->d->exits.remove("2"_q));
    QVERIFY(a->attached().isEmpty());
}

void tst_DocumentProperties::editsAreUndoneAndRedone()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    context.recording = true;
    a->setNext(b);
    a->d->exits.insert("x"_q, b);
    a->d->exits.rename("x"_q, "y"_q);
    a->addListElement("notes"_q, a->newNote("one"_q));
    a->addListElement("notes"_q, a->newNote("two"_q));
    a->moveListElement("notes"_q, 0, 1);
    a->d->note.set(a->newNote("single"_q));
    const auto state = [a] {
        return QStringList { idOf(a->next()), a->exitTexts(), a->noteTexts(),
                             a->d->note.get() ? a->d->note.get()->text() : "null"_q };
    };
    const QStringList edited { "b"_q, "y:b"_q, "two one"_q, "single"_q };
    const QStringList empty { "null"_q, QString(), QString(), "null"_q };
    QCOMPARE(state(), edited);
    a->d->notes.clear();
    for (int round = 0; round < 2; ++round) {
        context.undo();
        settle();
        QCOMPARE(state(), empty);
        QVERIFY(a->attached().isEmpty() && b->referencingDocuments().isEmpty());
        context.redo();
        settle();
        QCOMPARE(state(), QStringList({ "b"_q, "y:b"_q, QString(), "single"_q }));
    }
    context.changes.back()->unapply();
    QCOMPARE(state(), edited);
    QCOMPARE(a->attached().size(), 4);
}

void tst_DocumentProperties::undoPassesOverWhatIsGone()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Note *note = a->newNote("gone"_q);
    a->setNext(b);
    a->d->exits.insert("x"_q, b);
    a->d->notes.insert(note, -1);
    context.recording = true;
    a->setNext(nullptr);
    a->d->exits.clear();
    a->d->notes.clear();
    delete b;
    delete note;
    context.undo();
    QVERIFY(!a->next() && !a->d->notes.at(0));
    QCOMPARE(a->exitTexts(), QString());
    QVERIFY(a->attached().isEmpty());

    Station *c = context.station("c"_q);
    context.changes.clear();
    c->setNext(a);
    delete c;
    context.undo(); // the document itself has gone
    context.redo();
    QVERIFY(a->referencingDocuments().isEmpty());
}

void tst_DocumentProperties::replacedElementsAreDisposedOf()
{
    GraphContext context;
    Station *a = context.built("a"_q, pendingData);
    for (int round = 0; round < 50; ++round) {
        reload(a, pendingData);
        reload(a, { { "note"_q, QJsonObject { { "type"_q, "note"_q } } } });
        if (round % 2) {
            settle();
        }
        reload(a, { { "note"_q, QJsonValue() } });
    }
    settle();
    QCOMPARE(a->findChildren<Note *>().size(), 2);

    context.recording = true;
    const QPointer<Note> held(a->d->notes.get().at(0));
    a->d->notes.remove(held);
    settle();
    QVERIFY(held); // a change may bring it back
    context.clearChanges();
    settle();
    QVERIFY(!held);
}

void tst_DocumentProperties::elementsMayMoveBetweenProperties()
{
    GraphContext context;
    const QPointer<Station> a(context.station("a"_q));
    Station *b = context.station("b"_q);
    const QPointer<Note> note(a->newNote("wanders"_q));
    a->addListElement("notes"_q, note);
    // Nothing is recorded, so nothing but its new place keeps it.
    QVERIFY(a->removeListElement("notes"_q, note));
    QVERIFY(note->deleted());
    QVERIFY(b->addListElement("notes"_q, note));
    settle();
    QVERIFY(note && !note->deleted());
    QCOMPARE(note->parentDocument(), b);
    QCOMPARE(note->documentId(), "b"_q);
    delete a;
    QCOMPARE(b->noteTexts(), "wanders"_q);
    const int edits = b->changeSequenceNumber();
    note->setText("stays"_q);
    QCOMPARE(b->changeSequenceNumber(), edits + 1);
    note->remove();
    settle();
    QVERIFY(!note);
    QCOMPARE(b->noteTexts(), QString());
}

void tst_DocumentProperties::inlineDocumentsCannotHoldThemselves()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Note *outer = a->newNote("outer"_q);
    Note *inner = a->newNote("inner"_q);
    QVERIFY(!outer->d->notes.insert(outer, -1));
    // No property holds the outer one, so nothing can be inserted into it as an owned one yet.
    QVERIFY(outer->d->notes.insert(inner, -1));
    QVERIFY(!inner->d->notes.insert(outer, -1));
    QVERIFY(a->d->notes.insert(outer, -1));
    QVERIFY(!inner->d->notes.insert(outer, -1));
    QCOMPARE(inner->linkSource(), a);
    QCOMPARE(a->serialize().value("notes"_q).toArray().size(), 1);
    inner->setStation(context.station("b"_q));
    QCOMPARE(referencesOf(a), "b"_q);
}

void tst_DocumentProperties::cyclesAreRefusedThroughPendingData()
{
    GraphContext context;
    context.store("b"_q, R"({"exits": {"x": "c"}})"_o);
    context.store("c"_q, R"({"notes": [{"type": "note", "station": "d"}]})"_o);
    context.store("d"_q, R"j({":data": {"s:s": {"f": "$ref(0,e)"}}})j"_o);
    Station *e = context.built("e"_q);
    Station *b = context.built("b"_q);
    QVERIFY(!e->setNext(b));
    QVERIFY(!e->d->exits.insert("x"_q, b));
    Note *note = e->newNote("inline"_q);
    QVERIFY(note->setStation(b)); // an orphan closes no cycle
    QVERIFY(!e->d->notes.insert(note, -1));
    QVERIFY(!e->setStructValue("s"_q, "f"_q, LinkedDocument::encodeReference(b)));
    QVERIFY(!e->isDirty());
    QVERIFY(context.station("f"_q)->setNext(b));
}

void tst_DocumentProperties::copiesHaveTheirOwnInlineDocuments()
{
    GraphContext context;
    context.store("b"_q);
    context.store("c"_q);
    Station *a = context.built("a"_q, pendingData);
    a->setTitle("title"_q);
    auto *copy = static_cast<Station *>(a->copy());
    QCOMPARE(idOf(copy->next()), "b"_q);
    QCOMPARE(copy->exitTexts(), "east:b west:c"_q);
    QCOMPARE(copy->noteTexts(), "one two"_q);
    QCOMPARE(copy->title(), "title"_q);
    QVERIFY(copy->d->notes.at(0) != a->d->notes.at(0));
    copy->d->notes.get().at(0)->setText("other"_q);
    QCOMPARE(a->noteTexts(), "one two"_q);
    QCOMPARE(copy->d->notes.get().at(0)->station(), context.find("b"_q));
}

void tst_DocumentProperties::slotsMayDestroyAnything()
{
    using Action = std::function<void(GraphContext &, Station *)>;
    const QMap<QString, Action> actions {
        { "set"_q, [](auto &context, Station *a) { a->setNext(context.find("c"_q)); } },
        { "clear"_q, [](auto &, Station *a) { a->d->next.clear(); } },
        { "insert"_q, [](auto &, Station *a) { a->d->notes.insert(a->newNote("x"_q), 0); } },
        { "remove"_q, [](auto &, Station *a) { a->d->notes.remove(a->d->notes.at(0)); } },
        { "clear list"_q, [](auto &, Station *a) { a->d->notes.clear(); } },
        { "map"_q, [](auto &c, Station *a) { a->d->exits.insert("x"_q, c.find("c"_q)); } },
        { "clear map"_q, [](auto &, Station *a) { a->d->exits.clear(); } },
        { "hold"_q, [](auto &, Station *a) { a->d->note.set(a->newNote("x"_q)); } },
        { "text"_q, [](auto &, Station *a) { a->setTitle("x"_q); } },
        { "data"_q, [](auto &, Station *a) { reload(a, pendingData); } },
        { "struct"_q, [](auto &, Station *a) { a->setStructValue("s"_q, "f"_q, "$ref(0,c)"_q); } },
        { "delete target"_q, [](auto &context, Station *) { context.find("b"_q)->remove(); } },
        { "delete"_q, [](auto &, Station *a) { a->remove(); } },
        { "remove document"_q,
          [](auto &context, Station *) { context.removeDocument(context.find("b"_q)); } },
        { "undo"_q, [](auto &context, Station *) { context.undo(); } },
    };
    int sprung = 0;
    for (auto action = actions.begin(); action != actions.end(); ++action) {
        for (const char *signal : { "nextChanged", "notesChanged", "exitsChanged", "noteChanged",
                                    "titleChanged", "attachedDocumentsChanged", "editedChanged",
                                    "structValueChanged", "deletedChanged" }) {
            for (int victim = 0; victim < 5; ++victim) {
                QPointer<GraphContext> context(new GraphContext);
                for (const char *id : { "b", "c" }) {
                    context->built(QLatin1String(id));
                }
                QPointer<Station> a(context->built("a"_q, pendingData));
                settle();
                context->recording = true;
                a->setStructValue("s"_q, "f"_q, "$ref(0,b)"_q);
                a->setTitle("before"_q);
                const QPointer<QObject> victims[] { a.data(), context->find("b"_q),
                                                    a->d->notes.at(1), a->d->title.langString(),
                                                    context.data() };
                const SignalTrap trap(a, signal, [&] {
                    ++sprung;
                    delete victims[victim].data();
                });
                action.value()(*context, a);
                settle();
                delete context;
            }
        }
    }
    QVERIFY(sprung > 200);
}

void tst_DocumentProperties::slotsMayEditAgain()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Station *c = context.station("c"_q);
    for (const char *signal : { "nextChanged", "exitsChanged", "attachedDocumentsChanged" }) {
        a->setNext(nullptr);
        a->d->exits.clear();
        const SignalTrap trap(a, signal, [&] {
            a->setNext(c);
            a->d->exits.insert("x"_q, c);
        });
        a->setNext(b);
        a->d->exits.insert("x"_q, b);
        QCOMPARE(a->next(), c);
    }
    // A target that is put back whenever it is let go does not keep its deletion going.
    const SignalTrap trap(a, "nextChanged", [&] { a->setNext(c); });
    c->remove();
    a->disconnect();
    a->setNext(nullptr);
    a->d->exits.clear();
    QVERIFY(a->attached().isEmpty());
    QVERIFY(b->referencingDocuments().isEmpty() && c->referencingDocuments().isEmpty());
}

void tst_DocumentProperties::documentsMayGoWhileTheyWait()
{
    for (int victim = 0; victim < 3; ++victim) {
        auto context = std::make_unique<GraphContext>();
        context->store("b"_q);
        context->store("c"_q);
        std::vector<Station *> waiting;
        for (int i = 0; i < 5; ++i) {
            waiting.push_back(context->built(QString::number(i), pendingData));
        }
        if (victim == 0) {
            delete waiting.at(0);
            delete waiting.at(2);
        } else if (victim == 1) {
            context->removeDocument("b"_q); // before it has been built by a property
        } else {
            context.reset();
        }
        settle();
        if (context) {
            QCOMPARE(context->find("4"_q)->exitTexts(),
                     victim == 0 ? "east:b west:c"_q : "west:c"_q);
        }
    }
}

QTEST_GUILESS_MAIN(tst_DocumentProperties)
#include "tst_documentproperties.moc"
