// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/fakecouch.h"
#include "support/linkdocuments.h"
#include "support/logcapture.h"

#include <vorrel/data/properties/langstring.h>

#include <QtCore/QLocale>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_LangString : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::system()); }
    void textsAreKeptByLanguage();
    void lineBreaksBecomeBlanks_data();
    void lineBreaksBecomeBlanks();
    void localeText_data();
    void localeText();
    void editsAreUndone();
    void notHeldTwice();
    void oldFormIsFetched_data();
    void oldFormIsFetched();
    void lateAnswersDoNotOverwrite();
    void oldFormIsForgottenWithTheText();
    void documentsMayGoDuringTheFetch();
};

void tst_LangString::textsAreKeptByLanguage()
{
    GraphContext context;
    Station *a = context.built("a"_q);
    QSignalSpy changed(a, &Station::titleChanged);
    QCOMPARE(a->title(), QString());
    QVERIFY(!a->langString("title"_q));
    QVERIFY(a->d->title.toJson().isNull());

    QVERIFY(a->setTitle("Guten Tag"_q));
    QVERIFY(!a->setTitle("Guten Tag"_q));
    QVERIFY(a->d->title.set("Good day"_q, "en"_q));
    QCOMPARE(a->title(), "Guten Tag"_q);
    QCOMPARE(a->langString("title"_q)->text("en"_q), "Good day"_q);
    QCOMPARE(a->d->title.toJson().toObject(),
             R"({"type": "langstring", "items": {"de": "Guten Tag", "en": "Good day"}})"_o);
    QVERIFY(a->isDirty());
    QVERIFY(changed.count() >= 2);

    const int before = int(changed.count());
    const int edits = a->changeSequenceNumber();
    LangString *texts = a->langString("title"_q);
    texts->setText("Hallo"_q, "de"_q); // around the property
    QVERIFY(changed.count() > before);
    QCOMPARE(a->changeSequenceNumber(), edits + 1);

    // Stored data of the same kind goes into the same object.
    reload(a, R"({"title": {"type": "langstring", "items": {"de": "Neu"}}})"_o);
    QCOMPARE(a->langString("title"_q), texts);
    QCOMPARE(a->title(), "Neu"_q);
    reload(a, R"({"title": null})"_o);
    QVERIFY(!a->langString("title"_q));
    QVERIFY(a->attached().isEmpty());

    context.levels.insert("b", Document::NoAccess);
    Station *b =
        context.built("b"_q, R"({"title": {"type": "langstring", "items": {"de": "x"}}})"_o);
    QVERIFY(b->title().isEmpty() && !b->langString("title"_q));
    QVERIFY(!b->setTitle("y"_q) && !b->d->title.setLangString(nullptr));
}

void tst_LangString::lineBreaksBecomeBlanks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("Unix") << "a\nb\nc"_q
                          << "a b c"_q;
    QTest::newRow("Windows") << "a\r\nb\r\nc"_q
                             << "a b c"_q;
    QTest::newRow("Macintosh") << "a\rb"_q
                               << "a b"_q;
    QTest::newRow("several") << "\n\r\n\n"_q
                             << "   "_q;
}

void tst_LangString::lineBreaksBecomeBlanks()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    GraphContext context;
    Station *a = context.station("a"_q);
    a->setTitle(text);
    QCOMPARE(a->title(), line);
    a->d->title.set(text, "en"_q);
    QCOMPARE(a->langString("title"_q)->text("en"_q), line);
    a->setStory(text);
    QCOMPARE(a->story(), text);
}

void tst_LangString::localeText_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("expected");
    QTest::newRow("exact") << "de_AT"_q
                           << "de de_AT en"_q
                           << "de_AT"_q;
    QTest::newRow("language") << "de_AT"_q
                              << "de de_DE en"_q
                              << "de"_q;
    QTest::newRow("English") << "fr_FR"_q
                             << "de en it"_q
                             << "en"_q;
    QTest::newRow("German") << "fr_FR"_q
                            << "de it"_q
                            << "de"_q;
    QTest::newRow("none") << "fr_FR"_q
                          << "it"_q << QString();
}

void tst_LangString::localeText()
{
    QFETCH(QString, locale);
    QFETCH(QString, languages);
    QFETCH(QString, expected);
    QLocale::setDefault(QLocale(locale));
    GraphContext context;
    Station *a = context.station("a"_q);
    const QStringList all = languages.split(QLatin1Char(' '));
    for (const QString &language : all) {
        a->d->title.set(language, language);
    }
    QCOMPARE(a->langString("title"_q)->localeText(), expected);
    a->setUseLocale(true);
    QCOMPARE(a->title(), expected);
}

void tst_LangString::editsAreUndone()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    context.recording = true;
    a->setTitle("one"_q);
    a->setTitle("two"_q);
    a->d->title.clear();
    QCOMPARE(a->title(), QString());
    context.changes.back()->unapply();
    QCOMPARE(a->title(), "two"_q);
    context.changes.back()->apply();
    for (int round = 0; round < 2; ++round) {
        context.undo();
        settle();
        QVERIFY(!a->langString("title"_q));
        context.redo();
        QVERIFY(!a->langString("title"_q));
    }
    Station *b = context.station("b"_q);
    b->setTitle("kept"_q);
    a->d->title.copy(&b->d->title);
    QCOMPARE(a->title(), "kept"_q);
    QVERIFY(a->langString("title"_q) != b->langString("title"_q));
    LangString *texts = a->langString("title"_q);
    texts->remove();
    QVERIFY(!a->langString("title"_q));
    QSignalSpy changed(a, &Station::titleChanged);
    texts->setText("nobody listens"_q, "de"_q);
    QCOMPARE(changed.count(), 0);
}

void tst_LangString::notHeldTwice()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    a->setTitle("x"_q);
    QVERIFY(!a->d->story.setLangString(a->langString("title"_q)));
    QVERIFY(!a->d->title.setLangString(a->langString("title"_q)));
    QCOMPARE(a->story(), QString());
}

void tst_LangString::oldFormIsFetched_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("title");
    const QByteArray found = R"({"_id": "x", "type": "langstring", "items": {"de": "Alt"}})";
    QTest::newRow("found") << 200 << found << "Alt"_q;
    QTest::newRow("created") << 201 << found << QString();
    QTest::newRow("missing") << 404 << QByteArray(R"({"error": "not_found"})") << QString();
    QTest::newRow("an array") << 200 << QByteArray("[1]") << QString();
    QTest::newRow("no JSON") << 200 << QByteArray("<html>") << QString();
    QTest::newRow("another type") << 200 << QByteArray(R"({"type": "note"})") << QString();
}

void tst_LangString::oldFormIsFetched()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, title);
    LogCapture log;
    FakeCouch couch;
    couch.answerNext(body, status);
    GraphContext context;
    context.setServiceUrl(QUrl("http://couch.test"_q));
    context.setNetworkAccessManager(&couch);
    Station *a = context.built("a"_q);
    context.setDatabase("db"_q);
    reload(a, R"({"title": "a/b?c"})"_o);
    QCOMPARE(a->serialize().value("title"_q), QJsonValue("a/b?c"_q)); // nothing is lost meanwhile
    QTRY_COMPARE(couch.calls().size(), 1);
    QTRY_COMPARE(couch.openCount(), 0);
    settle();
    QCOMPARE(couch.calls().constFirst().url.toString(QUrl::FullyEncoded),
             "http://couch.test/db/a%2Fb%3Fc"_q);
    QCOMPARE(a->title(), title);
    QCOMPARE(a->isDirty(), !title.isEmpty());
    QCOMPARE(a->serialize().value("title"_q).isString(), title.isEmpty());
}

void tst_LangString::lateAnswersDoNotOverwrite()
{
    FakeCouch couch;
    couch.store(R"({"_id": "old", "type": "langstring", "items": {"de": "Alt"}})"_o);
    GraphContext context;
    context.setServiceUrl(QUrl("http://couch.test"_q));
    context.setNetworkAccessManager(&couch);
    context.setDatabase("db"_q);
    couch.hold();
    Station *edited = context.built("edited"_q, R"({"title": "old"})"_o);
    Station *reloaded = context.built("reloaded"_q, R"({"title": "old"})"_o);
    Station *emptied = context.built("emptied"_q, R"({"title": "old"})"_o);
    QTRY_COMPARE(couch.openCount(), 3);
    edited->setTitle("Neu"_q);
    reload(reloaded, R"({"title": {"type": "langstring", "items": {"de": "Neu"}}})"_o);
    reload(emptied, R"({"title": null})"_o);
    couch.release();
    QTRY_COMPARE(couch.openCount(), 0);
    settle();
    QCOMPARE(edited->title(), "Neu"_q);
    QCOMPARE(reloaded->title(), "Neu"_q);
    QCOMPARE(emptied->title(), QString());
    QVERIFY(!reloaded->isDirty() && !emptied->isDirty());
}

void tst_LangString::oldFormIsForgottenWithTheText()
{
    LogCapture log;
    FakeCouch couch; // knows nothing
    GraphContext context;
    context.setServiceUrl(QUrl("http://couch.test"_q));
    context.setNetworkAccessManager(&couch);
    context.setDatabase("db"_q);
    Station *a = context.built("a"_q, R"({"title": "old"})"_o);
    QTRY_COMPARE(couch.calls().size(), 1);
    settle();
    QCOMPARE(a->d->title.toJson(), QJsonValue("old"_q));
    a->setTitle("x"_q);
    a->d->title.clear();
    QVERIFY(a->d->title.toJson().isNull());
}

void tst_LangString::documentsMayGoDuringTheFetch()
{
    for (const bool whole : { false, true }) {
        FakeCouch couch;
        couch.store(R"({"_id": "old", "type": "langstring", "items": {"de": "Alt"}})"_o);
        auto context = std::make_unique<GraphContext>();
        context->setServiceUrl(QUrl("http://couch.test"_q));
        context->setNetworkAccessManager(&couch);
        context->setDatabase("db"_q);
        couch.hold();
        Station *a = context->built("a"_q, R"({"title": "old"})"_o);
        QTRY_COMPARE(couch.openCount(), 1);
        if (whole) {
            context.reset();
        } else {
            delete a;
        }
        couch.release();
        settle();
        QCOMPARE(couch.openCount(), 0);
    }
}

QTEST_GUILESS_MAIN(tst_LangString)
#include "tst_langstring.moc"
