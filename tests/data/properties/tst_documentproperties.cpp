// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/data/properties/langstring.h>

#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>

using namespace vo::data;
using namespace vo::test;
using Edit = std::function<void(Station *)>;
using ListEdit = std::function<bool(Station *)>;
Q_DECLARE_METATYPE(Edit)
Q_DECLARE_METATYPE(ListEdit)

namespace {

/// The link, the notes and the exits of a station.
QString stateOf(const Station *station)
{
    const QString next = station->next() ? station->next()->documentId() : "null"_s;
    return "%1; %2; %3"_s.arg(next, station->noteTexts(), station->exitTexts());
}

// What a station is loaded with whose targets are not built.
const auto pendingData = R"({"next": "b", "exits": {"x": "b", "y": "c"}, "notes":
    [{"type": "note", "text": "1", "station": "b"}, {"type": "note", "text": "2"}]})"_json;

} // namespace

class tst_DocumentProperties : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<TestContext>();
        for (const QString &id : "b c d"_l) {
            m_context->store(id);
        }
    }

    // Links and lists that wait for their documents must not look empty, nor come late.
    void pendingDataIsFinishedByEachOperation_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<Edit>("edit");
        const auto row = [](const char *name, const QString &state, const Edit &edit) {
            QTest::newRow(name) << state << edit;
        };
        const auto all = "b; 1 2; x:b y:c"_s;
        row("get", all, [](auto *a) { QVERIFY(!a->isComplete() && !a->isDirty()); });
        row("wait", all, [](auto *a) {
            const QSignalSpy notes(a, &Station::notesChanged);
            processEvents();
            QVERIFY(notes.count() == 1 && a->attached().size() == 4 && !a->isDirty());
        });
        row("store", all, [](auto *a) {
            const QJsonObject json = a->serialize();
            QCOMPARE(json["next"_s], QJsonValue("b"_s));
            QCOMPARE(json["notes"_s].toArray().size(), 2);
            QCOMPARE(json["exits"_s], QJsonValue(R"({"x": "b", "y": "c"})"_json));
        });
        row("references", all, [](auto *a) {
            QSet<QString> ids;
            a->aggregateReferences(ids);
            QCOMPARE(ids, QSet<QString>({ "b"_s, "c"_s }));
        });
        row("copy", all, [](auto *a) {
            const auto *copy = static_cast<Station *>(a->copy());
            QCOMPARE(stateOf(copy), stateOf(a));
            QCOMPARE(copy->d->notes.get().at(0)->station(), a->next());
            copy->d->notes.get().at(0)->setText("its own"_s);
        });
        row("link", "c; 1 2; x:b y:c"_s, [this](auto *a) { a->setNext(m_context->find("c"_s)); });
        row("unlink", "null; 1 2; x:b y:c"_s, [](auto *a) { a->d->next.clear(); });
        row("delete", "null; 1 2; y:c"_s, [this](auto *) { m_context->find("b"_s)->remove(); });
        row("insert", "b; 1 new 2; x:b y:c"_s,
            [](auto *a) { a->insertListElement("notes"_s, a->newNote("new"_s), 1); });
        row("move", "b; 2 1; x:b y:c"_s, [](auto *a) { a->moveListElement("notes"_s, 0, 1); });
        row("remove", "b; 2; x:b y:c"_s, [](auto *a) { a->removeListIndex("notes"_s, 0); });
        row("clear list", "b; ; x:b y:c"_s, [](auto *a) { a->d->notes.clear(); });
        row("map: insert", "b; 1 2; x:b y:c z:d"_s,
            [this](auto *a) { a->d->exits.insert("z"_s, m_context->find("d"_s)); });
        row("map: replace", "b; 1 2; x:c"_s, // each document is held once
            [this](auto *a) { a->d->exits.insert("x"_s, m_context->find("c"_s)); });
        row("map: remove", "b; 1 2; y:c"_s, [](auto *a) { a->d->exits.remove("x"_s); });
        row("map: rename", "b; 1 2; w:b y:c"_s, [](auto *a) { a->d->exits.rename("x"_s, "w"_s); });
        row("map: clear", "b; 1 2; "_s, [](auto *a) { a->d->exits.clear(); });
    }
    void pendingDataIsFinishedByEachOperation()
    {
        QFETCH(QString, state);
        QFETCH(Edit, edit);
        Station *a = m_context->load("a"_s, pendingData);
        QVERIFY(!m_context->isBuilt("b")); // building never builds
        edit(a);
        QCOMPARE(stateOf(a), state);
        processEvents();
        QCOMPARE(stateOf(a), state);
        QVERIFY(a->isComplete());
    }

    void linksThatCannotBeFollowedAreNull()
    {
        const LogCapture log;
        m_context->store("tag"_s, { { "type"_s, "tag"_s } })->instantiate();
        m_context->store("tag2"_s, { { "type"_s, "tag"_s } });
        m_context->store("alien"_s, { { "type"_s, "alien"_s } });
        const QJsonArray values { "c"_s,   QJsonValue(), ""_s,     "nowhere"_s, 5, QJsonArray { 1 },
                                  "tag"_s, "tag2"_s,     "alien"_s };
        Station *a = m_context->load("a"_s);
        for (const QJsonValue value : values) {
            reload(a, R"({"next": "b", "exits": {"x": "b"}})"_json);
            QCOMPARE(stateOf(a), "b; ; x:b"_s);
            reload(a, { { "next"_s, value }, { "exits"_s, QJsonObject { { "x"_s, value } } } });
            for (int turn = 0; turn < 2; ++turn) {
                QCOMPARE(stateOf(a), value == "c"_s ? "c; ; x:c"_s : "null; ; "_s);
                processEvents();
            }
            QVERIFY(m_context->find("b"_s)->referencingDocuments().isEmpty());
        }
    }

    void unknownInlineTypesAreLoggedAndPassedOver()
    {
        const LogCapture log;
        const auto data = R"({"note": {"type": "langstring"}, "notes": [5, null, {"type": "alien"},
            {"type": "note", "text": "one"}, {"text": "typeless"}]})"_json;
        const Station *a = m_context->load("a"_s, data);
        // Whoever saves before they are made stores them as they came.
        QCOMPARE(a->serialize()["notes"_s], data["notes"_s]);
        QVERIFY(!a->d->note.get());
        QCOMPARE(a->noteTexts(), "one"_s);
        QCOMPARE(log.count("Document a holds an inline document of the unknown type \"alien\""_s),
                 1);
    }

    void fallbackStandsInAndIsNotStored()
    {
        Station *a = m_context->create("a"_s);
        a->d->next.setFallback(m_context->find("b"_s));
        a->d->next.setFallback(m_context->find("c"_s));
        a->setNext(m_context->find("d"_s));
        a->d->next.clear();
        QCOMPARE(a->next(), m_context->find("c"_s));
        QCOMPARE(a->attached(), QList<Document *> { a->next() });
        QVERIFY(a->serialize()["next"_s].isNull());
        QCOMPARE(a->serialize()["references"_s], QJsonValue(QJsonArray()));
    }

    void otherContextsAreRefused()
    {
        auto foreign = std::make_unique<TestContext>();
        Station *a = m_context->create("a"_s);
        Station *stranger = foreign->create("stranger"_s);
        Note *note = stranger->newNote("strange"_s);
        stranger->setTitle("strange"_s);
        const LogCapture log;
        QVERIFY(!a->setNext(stranger) && !a->d->exits.insert("x"_s, stranger));
        QVERIFY(!a->d->note.set(note) && !a->d->notes.insert(note, -1));
        QVERIFY(!a->d->title.setLangString(stranger->langString("title"_s)));
        QCOMPARE(log.count("Cannot set document from different context"_s), 5);
        foreign.reset();
        QVERIFY(!a->next() && a->attached().isEmpty());
    }

    void listIndexes_data()
    {
        QTest::addColumn<ListEdit>("edit");
        QTest::addColumn<QString>("expected"); // of a list "0 1 2"
        const auto row = [](const QString &name, const char *expected, const ListEdit &edit) {
            QTest::newRow(qPrintable(name)) << edit << QString::fromUtf8(expected);
        };
        const QString list = "notes"_s;
        using Limits = std::numeric_limits<int>;
        for (const int index : { -1, Limits::min(), 3, Limits::max() }) {
            const QString text = QString::number(index);
            row("insert at "_s + text, "0 1 2 x done",
                [=](auto *a) { return a->insertListElement(list, a->newNote("x"_s), index); });
            row("move from, to and remove at "_s + text, "0 1 2 refused", [=](auto *a) {
                return a->d->notes.at(index) || a->removeListIndex(list, index)
                    || a->moveListElement(list, 0, index) || a->moveListElement(list, index, 0);
            });
        }
        row("insert in front"_s, "x 0 1 2 done",
            [=](auto *a) { return a->insertListElement(list, a->newNote("x"_s), 0); });
        row("insert what is there"_s, "1 2 0 done",
            [=](auto *a) { return a->addListElement(list, a->d->notes.at(0)); });
        row("insert what cannot be"_s, "0 1 2 refused", [=](auto *a) {
            a->d->note.set(a->newNote("held"_s));
            return a->addListElement(list, a->d->note.get()) || a->addListElement(list, nullptr)
                || a->insertListElement(list, a->d->notes.at(1), 1) || a->addListElement(list, a)
                || a->addListElement(list, InlineDocument::create("langstring"_s, a));
        });
        row("move"_s, "1 2 0 done", [=](auto *a) { return a->moveListElement(list, 0, 2); });
        row("remove at 1"_s, "0 2 refused", // false, though it is gone
            [=](auto *a) { return a->removeListIndex(list, 1); });
    }
    void listIndexes()
    {
        QFETCH(ListEdit, edit);
        QFETCH(QString, expected);
        Station *a = m_context->create("a"_s);
        for (const QString &text : "0 1 2"_l) {
            a->d->notes.insert(a->newNote(text), -1);
        }
        m_context->recording = true;
        const QString result = edit(a) ? " done"_s : " refused"_s;
        QCOMPARE(a->noteTexts() + result, expected);
        m_context->undo();
        QCOMPARE(a->noteTexts(), "0 1 2"_s);
    }

    void replacedElementsAreDisposedOf()
    {
        Station *a = m_context->load("a"_s, pendingData);
        for (int round = 0; round < 20; ++round) {
            reload(a, pendingData);
            static_cast<void>(a->noteTexts());
        }
        processEvents();
        QCOMPARE(a->findChildren<Note *>().size(), 2);
        m_context->recording = true;
        const QPointer<Note> held(a->d->notes.get().at(0));
        a->d->notes.remove(held);
        processEvents();
        QVERIFY(held); // a change may bring it back
        m_context->clearChanges();
        processEvents();
        QVERIFY(!held);
    }

    void elementsMayMoveToAnotherDocument()
    {
        Station *a = m_context->create("a"_s);
        const QPointer<Note> note(a->newNote("wanders"_s));
        a->addListElement("notes"_s, note);
        // Nothing is recorded, so nothing but its new place keeps it.
        QVERIFY(a->removeListElement("notes"_s, note) && note->deleted());
        QVERIFY(m_context->find("b"_s)->addListElement("notes"_s, note));
        delete a;
        processEvents();
        QCOMPARE(m_context->find("b"_s)->noteTexts(), "wanders"_s);
    }

    void inlineDocumentsCannotHoldThemselves()
    {
        Station *a = m_context->create("a"_s);
        Note *outer = a->newNote("outer"_s);
        Note *inner = a->newNote("inner"_s);
        QVERIFY(!outer->d->notes.insert(outer, -1));
        QVERIFY(outer->d->notes.insert(inner, -1) && !inner->d->notes.insert(outer, -1));
        QVERIFY(a->d->notes.insert(outer, -1) && !inner->d->notes.insert(outer, -1));
    }

    void cyclesAreRefusedThroughPendingData()
    {
        m_context->store("1"_s, R"({"exits": {"x": "2"}})"_json);
        m_context->store("2"_s, R"({"notes": [{"type": "note", "station": "3"}]})"_json);
        m_context->store("3"_s, R"j({":data": {"s:s": {"f": "$ref(0,4)"}}})j"_json);
        Station *last = m_context->load("4"_s);
        Station *first = m_context->find("1"_s);
        Note *note = last->newNote("inline"_s);
        QVERIFY(note->setStation(first)); // an orphan closes no cycle
        QVERIFY(!last->setNext(first) && !last->d->exits.insert("x"_s, first));
        QVERIFY(!last->d->notes.insert(note, -1));
        QVERIFY(!last->setStructValue("s"_s, "f"_s, "$ref(0,1)"_s));
        QVERIFY(!last->isDirty() && m_context->find("b"_s)->setNext(first));
    }

private:
    std::unique_ptr<TestContext> m_context;
};

QTEST_GUILESS_MAIN(tst_DocumentProperties)
#include "tst_documentproperties.moc"
