// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/fakecouch.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/data/properties/langstring.h>

#include <QtCore/QLocale>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <new>

using namespace vo::data;
using namespace vo::test;
using Edit = std::function<void(Station &)>;
Q_DECLARE_METATYPE(Edit)

namespace {

const QDateTime noon(QDate(2024, 6, 1), QTime(12, 0), Qt::UTC);

/// Holds its property itself, so that the property is found where the document is.
struct Inlined : public LinkedDocument
{
    using LinkedDocument::LinkedDocument;
    Property<int> number { "number", this };
};

} // namespace

class tst_Property : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<TestContext>();
        m_context->setServiceUrl(QUrl("http://couch.test"_s));
        m_context->setNetworkAccessManager(&m_couch);
        m_context->setDatabase("db"_s);
        m_context->create("b"_s);
        m_station = m_context->load("a"_s, R"({"text": "t", "prices": {"AT": 1}})"_json);
    }
    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void eachKindIsEdited_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<Edit>("edit");
        const auto row = [](const char *signal, const char *kind, const Edit &edit) {
            QTest::newRow(kind) << QByteArray(signal) << edit;
        };
        row("numberChanged", "value", [](auto &a) { a.setNumber(1); });
        row("momentChanged", "moment", [](auto &a) { a.setMoment(noon); });
        row("paletteChanged", "list", [](auto &a) { a.d->palette.set({ QColor(1, 2, 3) }); });
        row("pricesChanged", "map", [](auto &a) { a.d->prices.set("DE"_s, 2); });
        row("pricesChanged", "map, removed", [](auto &a) { a.d->prices.remove("AT"_s); });
        row("captionChanged", "caption", [](auto &a) { a.d->caption.insert("_"_s, "c"_s); });
        row("titleChanged", "texts", [](auto &a) { a.setTitle("t"_s); });
        row("nextChanged", "link", [this](auto &a) { a.setNext(m_context->find("b"_s)); });
        row("noteChanged", "inline", [](auto &a) { a.d->note.set(a.newNote("n"_s)); });
        row("notesChanged", "inline list", [](auto &a) { a.d->notes.insert(a.newNote("n"_s), 0); });
        row("exitsChanged", "map of links",
            [this](auto &a) { a.d->exits.insert("x"_s, m_context->find("b"_s)); });
        row("structValueChanged", "struct",
            [](auto &a) { a.setStructValue("s"_s, "f"_s, "$ref(0,b)"_s); });
    }
    void eachKindIsEdited()
    {
        QFETCH(QByteArray, signal);
        QFETCH(Edit, edit);
        const QJsonObject before = content();
        for (const auto level : { Document::NoAccess, Document::ReadAccess }) {
            m_context->setLevel("a"_s, level);
            m_station->updateAccessLevel();
            edit(*m_station);
            QCOMPARE(content(), before);
            QVERIFY(!m_station->isDirty());
        }
        m_context->setLevel("a"_s, Document::WriteAccess);
        processEvents();

        m_context->recording = true;
        QStringList order;
        const SignalHook told(m_station, signal, [&] { order += "told"_s; });
        const SignalHook dirty(m_station, "editedChanged", [&] { order += "dirty"_s; });
        edit(*m_station);
        const bool dirtyFirst = signal == "momentChanged" || signal == "captionChanged";
        QCOMPARE(order.mid(0, 2), dirtyFirst ? "dirty told"_l : "told dirty"_l);
        const QJsonObject after = content();
        QVERIFY(after != before);
        QCOMPARE(m_context->changes.empty(), signal == "captionChanged"); // never recorded
        for (int round = 0; round < 2 && !m_context->changes.empty(); ++round) {
            m_context->undo();
            processEvents();
            QCOMPARE(content(), before);
            QVERIFY(m_station->attached().isEmpty());
            m_context->redo();
            QCOMPARE(content(), after);
        }
    }

    void equalValueIsNoEdit()
    {
        m_station->setMoment(noon);
        const int edits = m_station->changeSequenceNumber();
        QVERIFY(!m_station->setNumber(7) && !m_station->setText("t"_s));
        QVERIFY(!m_station->setMoment(noon.toOffsetFromUtc(3600)));
        QVERIFY(!m_station->d->palette.set({}) && !m_station->d->prices.set("AT"_s, 1));
        QVERIFY(!m_station->d->prices.remove("DE"_s));
        QCOMPARE(m_station->changeSequenceNumber(), edits);
        reload(m_station, R"({"moment": "2024-06-01T14:00:01+02:00"})"_json);
        QCOMPARE(m_station->moment(), noon.addSecs(1));
        QCOMPARE(m_station->moment().timeSpec(), Qt::UTC);
    }

    void readersSeeAndKeepWhatIsStored()
    {
        const auto stored = R"({"text": "a", "number": 3, "palette": ["#010203"],
            "prices": {"AT": 1}, "caption": {"_": "t"},
            "title": {"type": "langstring", "items": {"de": "t"}}})"_json;
        for (const auto level : { Document::NoAccess, Document::ReadAccess }) {
            m_context->levels.insert("c", level);
            const std::unique_ptr<Station> c(m_context->load("c"_s, stored));
            const bool readable = level == Document::ReadAccess;
            QCOMPARE(c->number(), readable ? 3 : 0);
            QCOMPARE(c->text() + c->title() + c->d->caption.get(), readable ? "att"_s : ""_s);
            QCOMPARE(c->d->palette.get().isEmpty(), !readable);
            QCOMPARE(c->d->prices.object().isEmpty(), !readable);
            // Storing asks for no access: a reader must not empty what it passes on.
            for (const QString &key : stored.keys()) {
                QCOMPARE(c->serialize().value(key), stored.value(key));
            }
        }
    }

    void storedDataIsNoEdit()
    {
        const QSignalSpy number(m_station, &Station::numberChanged);
        m_context->recording = true;
        QCOMPARE(m_station->number(), 7); // the initial value of its class
        reload(m_station, R"({"number": "12"})"_json);
        reload(m_station, R"({"number": 12})"_json);
        QVERIFY(m_station->number() == 12 && number.count() == 1);
        QCOMPARE(m_station->text(), "t"_s); // a missing key leaves the value
        reload(m_station, R"({"number": null})"_json);
        QVERIFY(m_station->number() == 0 && !m_station->isDirty() && m_context->changes.empty());
    }

    void editsOfOnePropertyMerge()
    {
        m_context->recording = true;
        m_station->d->prices.set("AT"_s, 5);
        m_station->d->prices.set("DE"_s, 2);
        m_station->setText("a"_s);
        m_station->d->nameless.set("b"_s);
        const auto &changes = m_context->changes;
        QVERIFY(changes[0]->uniqueKey() != 0 && changes[0]->uniqueKey() == changes[1]->uniqueKey());
        QVERIFY(changes[0]->canMergeWith(changes[1].get()));
        QVERIFY(!changes[1]->canMergeWith(changes[2].get()));
        QVERIFY(!changes[2]->canMergeWith(changes[3].get()));
        changes[0]->mergeWith(changes[1].get());
        changes[0]->unapply();
        QCOMPARE(m_station->d->prices.object(), R"({"AT": 1})"_json); // the first old value
        changes[0]->apply();
        QCOMPARE(m_station->d->prices.object(), R"({"AT": 5, "DE": 2})"_json); // the last new one
    }

    void reusedAddressDoesNotMergeStrangers()
    {
        m_context->recording = true;
        alignas(Inlined) unsigned char storage[sizeof(Inlined)];
        for (const int number : { 1, 2 }) {
            auto *document = new (storage) Inlined(m_context.get());
            QVERIFY(document->number.set(number));
            document->~Inlined();
        }
        const auto &changes = m_context->changes;
        QCOMPARE(changes.at(0)->uniqueKey(), changes.at(1)->uniqueKey());
        QVERIFY(!changes.at(0)->canMergeWith(changes.at(1).get()));
    }

    void recordsOfPropertiesStayInPlace()
    {
        const PropertyInfo *text = &PropertyInfo::get("text", m_station);
        for (int number = 0; number < 2000; ++number) { // makes the table grow
            static_cast<void>(PropertyInfo::get(QByteArray::number(number), m_station));
        }
        QCOMPARE(&PropertyInfo::get("text", m_station), text);
    }

    void textsAreKeptByLanguage()
    {
        Station *a = m_station;
        QVERIFY(a->setTitle("Guten Tag"_s) && !a->setTitle("Guten Tag"_s));
        QVERIFY(a->d->title.set("Good\r\nday\n"_s, "en"_s)); // a title is one line
        QVERIFY(a->setStory("two\nlines"_s));
        QCOMPARE(a->story(), "two\nlines"_s);
        const auto stored =
            R"({"type": "langstring", "items": {"de": "Guten Tag", "en": "Good day "}})"_json;
        QCOMPARE(a->d->title.toJson(), QJsonValue(stored));

        const int edits = a->changeSequenceNumber();
        LangString *texts = a->langString("title"_s);
        texts->setText("Hallo"_s, "de"_s); // around the property
        QCOMPARE(a->changeSequenceNumber(), edits + 1);
        QVERIFY(!a->d->story.setLangString(texts)); // it is held already
        reload(a, { { "title"_s, stored } });       // goes into the same object
        QCOMPARE(a->langString("title"_s), texts);
        QCOMPARE(a->title(), "Guten Tag"_s);
        texts->remove();
        QVERIFY(a->title().isNull() && !a->attached().contains(texts));
    }

    void textsFollowTheLocale()
    {
        UiStringProperty &caption = m_station->d->caption;
        QLocale::setDefault(QLocale("de_AT"_s));
        m_station->setUseLocale(true);
        for (const QString &key : "_ de de_AT de_DE"_l) { // each a better choice but the last
            caption.insert(key, key);
            QCOMPARE(caption.get(), key == "de_DE"_s ? "de_AT"_s : key);
        }
        for (const QString &key : "en de de_AT it"_l) {
            m_station->d->title.set(key, key);
            QCOMPARE(m_station->title(), key == "it"_s ? "de_AT"_s : key);
        }
        QLocale::setDefault(QLocale("fr_FR"_s));
        QCOMPARE(caption.get() + m_station->langString("title"_s)->localeText(), "_en"_s);
    }

    // Once a text was the id of a document of its own.
    void oldFormIsFetched_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("title");
        const auto row = [](const char *name, int status, const char *body, const QString &title) {
            QTest::newRow(name) << status << QByteArray(body) << title;
        };
        const char *const found = R"({"_id": "x", "type": "langstring", "items": {"de": "Alt"}})";
        row("found", 200, found, "Alt"_s);
        row("missing", 404, R"({"error": "not_found"})", QString());
        row("no JSON", 200, "<html>", QString());
        row("another type", 200, R"({"type": "note"})", QString());
    }
    void oldFormIsFetched()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, title);
        const LogCapture log;
        m_couch.answerNext(body, status);
        Station *a = m_station;
        reload(a, R"({"title": "a/b?c"})"_json);
        QCOMPARE(a->d->title.toJson(), QJsonValue("a/b?c"_s)); // nothing is lost meanwhile
        QTRY_COMPARE(m_couch.openCount(), 0);
        processEvents();
        QCOMPARE(m_couch.calls().constLast().url.toString(QUrl::FullyEncoded),
                 "http://couch.test/db/a%2Fb%3Fc"_s);
        QCOMPARE(a->title(), title);
        QCOMPARE(a->isDirty(), !title.isEmpty());
        QCOMPARE(a->d->title.toJson().isString(), title.isEmpty());
        a->setTitle("x"_s);
        a->d->title.clear();
        QVERIFY(a->d->title.toJson().isNull()); // the old form is forgotten, too
    }

    void lateAnswersDoNotOverwrite()
    {
        m_couch.store(R"({"_id": "old", "type": "langstring", "items": {"de": "Alt"}})"_json);
        m_couch.hold();
        for (const QString &id : "edited reloaded emptied deleted"_l) {
            m_context->load(id, R"({"title": "old"})"_json);
        }
        QTRY_COMPARE(m_couch.openCount(), 4);
        Station *reloaded = m_context->find("reloaded"_s);
        Station *emptied = m_context->find("emptied"_s);
        m_context->find("edited"_s)->setTitle("Neu"_s);
        reload(reloaded, R"({"title": {"type": "langstring", "items": {"de": "Neu"}}})"_json);
        reload(emptied, R"({"title": null})"_json);
        delete m_context->find("deleted"_s);
        m_couch.release();
        QTRY_COMPARE(m_couch.openCount(), 0);
        processEvents();
        QCOMPARE(m_context->find("edited"_s)->title(), "Neu"_s);
        QVERIFY(reloaded->title() == "Neu"_s && !reloaded->isDirty());
        QVERIFY(emptied->title().isNull() && !emptied->isDirty());
        reload(emptied, R"({"title": "old"})"_json);
        m_context.reset(); // with the request open
        processEvents();
    }

private:
    [[nodiscard]] QJsonObject content() const
    {
        QJsonObject json = m_station->serialize();
        json.remove("edited"_s);
        return json;
    }

    FakeCouch m_couch;
    std::unique_ptr<TestContext> m_context;
    Station *m_station = nullptr;
};

QTEST_GUILESS_MAIN(tst_Property)
#include "tst_property.moc"
