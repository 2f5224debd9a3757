// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/linkdocuments.h"

#include <vorrel/util/message.h>

#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

QJsonObject withField(const QString &reference)
{
    return { { ":data"_q,
               QJsonObject { { "s:s"_q, QJsonObject { { "f"_q, reference }, { "g"_q, 1 } } } } } };
}

QStringList storedReferences(const LinkedDocument *document)
{
    QStringList ids;
    const QJsonArray array = document->serialize().value("references"_q).toArray();
    for (const QJsonValue id : array) {
        ids.append(id.toString());
    }
    return ids;
}

} // namespace

class tst_References : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void parses_data();
    void parses();
    void otherTextsAreText_data();
    void otherTextsAreText();
    void encodes();
    void attachesOnceHoweverManyFields();
    void countsReferencesBesideFields();
    void refusesWhatIsNotLoadedOrClosesACycle();
    void loadedReferencesAreAttachedLater();
    void replacedDataKeepsWhatStays();
    void undoRestoresCounts();
    void slotsMayWriteTheSameField();
    void purgesDeletedDocuments();
    void referencesBuildWhatIsMissing();
};

void tst_References::parses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<int>("type");
    const auto row = [](const QString &text, const char *id, int type) {
        QTest::newRow(qPrintable(text)) << text << QByteArray(id) << type;
    };
    row("$ref(0,abc-1.2)"_q, "abc-1.2", 0);
    row("$ref(7,a_B)"_q, "a_B", 7);
    row("$ref(2147483647,a)"_q, "a", 2147483647);
    for (const auto &text :
         { "$ref(x,abc)"_q, "$ref(99999999999,abc)"_q, "$ref(2147483648,a)"_q, "$ref(-1,a)"_q,
           "$ref(0,)"_q, "$ref(,a)"_q, "$ref(0,a b)"_q, "$ref(0,a)\n"_q, "$ref(0,a))"_q,
           " $ref(0,a)"_q, "$ref(0,\u00e4)"_q, "$ref("_q, "$REF(0,a)"_q, ""_q }) {
        row(text, "", -1);
    }
}

void tst_References::parses()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, id);
    QFETCH(int, type);
    QCOMPARE(LinkedDocument::referenceData(text), std::make_tuple(id, type));
    QCOMPARE(LinkedDocument::isReference(text), text.startsWith("$ref("_q));
}

void tst_References::otherTextsAreText_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : { "$ref(", "$ref(x,abc)", "$ref(99999999999,abc)", "$ref(1,abc)",
                              "$ref(0,a b)", "$ref(0,abc) and more" }) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void tst_References::otherTextsAreText()
{
    QFETCH(QString, text);
    GraphContext context;
    context.station("abc"_q);
    context.recording = true;
    Station *a = context.built("a"_q, withField(text));
    QVERIFY(!a->decodeReference(text));
    QVERIFY(a->setStructValue("s"_q, "h"_q, text));
    QCOMPARE(a->getStructValue("s"_q, "f"_q).toString(), text);
    QVERIFY(storedReferences(a).isEmpty());
    QVERIFY(a->references(0).isEmpty() && a->references(1).isEmpty()
            && a->references(-1).isEmpty());
    a->setStructValue("s"_q, "h"_q, QJsonValue::Null);
    context.undo();
    settle();
    QVERIFY(a->attached().isEmpty());
    a->remove();
}

void tst_References::encodes()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    QCOMPARE(LinkedDocument::encodeReference(a), "$ref(0,a)"_q);
    QCOMPARE(LinkedDocument::encodeReference(nullptr), QString());
    QCOMPARE(LinkedDocument::encodeReference(a->newNote("x"_q)), QString());
    QCOMPARE(LinkedDocument::encodeReference(&context), QString());
    QCOMPARE(a->decodeReference("$ref(0,a)"_q), a);
    QVERIFY(!a->decodeReference("$ref(0,b)"_q));
    QVERIFY(!a->hasReference(nullptr) && !a->hasReference(&context));
    a->addReference(nullptr);
    a->removeReference(nullptr);
}

void tst_References::attachesOnceHoweverManyFields()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    const QString reference = LinkedDocument::encodeReference(b);
    QSignalSpy attached(a, &Document::attachedDocumentsChanged);
    QVERIFY(a->setStructValue("s"_q, "f"_q, reference));
    QVERIFY(!a->setStructValue("s"_q, "f"_q, reference));
    QVERIFY(a->setStructValue("t"_q, "f"_q, reference));
    QCOMPARE(attached.count(), 1);
    QCOMPARE(a->references(0), QList<QObject *> { b });
    a->setStructValue("s"_q, "f"_q, 5);
    QVERIFY(a->hasReference(b));
    QCOMPARE(attached.count(), 1);
    a->setStructValue("t"_q, "f"_q, QJsonValue::Undefined);
    QVERIFY(!a->hasReference(b) && !a->hasReference("b", 0));
    QCOMPARE(attached.count(), 2);
    QVERIFY(b->referencingDocuments().isEmpty());
}

void tst_References::countsReferencesBesideFields()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    const int edits = a->changeSequenceNumber();
    a->addReference(b);
    a->addReference(b);
    a->removeReference(b);
    QCOMPARE(storedReferences(a), QStringList { "b"_q });
    QCOMPARE(a->attached(), QList<Document *> { b });
    a->removeReference(b);
    a->removeReference(b);
    QVERIFY(a->attached().isEmpty() && storedReferences(a).isEmpty());
    QCOMPARE(a->changeSequenceNumber(), edits);
}

void tst_References::refusesWhatIsNotLoadedOrClosesACycle()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Station *gone = context.station("gone"_q);
    gone->remove();
    QVERIFY(!a->setStructValue("s"_q, "f"_q, "$ref(0,nowhere)"_q));
    QVERIFY(!a->setStructValue("s"_q, "f"_q, "$ref(0,gone)"_q));
    QVERIFY(!a->setStructValue("s"_q, "f"_q, "$ref(0,a)"_q));
    QVERIFY(b->setNext(a));
    QSignalSpy messages(vo::util::Message::instance(), &vo::util::Message::sent);
    QVERIFY(!a->setStructValue("s"_q, "f"_q, "$ref(0,b)"_q));
    QCOMPARE(messages.count(), 1);
    QVERIFY(a->attached().isEmpty());
    QVERIFY(a->getStruct("s"_q).isEmpty());
}

void tst_References::loadedReferencesAreAttachedLater()
{
    GraphContext context;
    context.store("b"_q);
    Station *a = context.built("a"_q, withField("$ref(0,b)"_q));
    Station *lost = context.built("lost"_q, withField("$ref(0,unknown)"_q));
    Station *changed = context.built("changed"_q, withField("$ref(0,b)"_q));
    QVERIFY(!context.isBuilt("b"_q));
    QCOMPARE(storedReferences(a), QStringList { "b"_q }); // also before it is attached
    QCOMPARE(storedReferences(lost), QStringList { "unknown"_q });
    reload(changed, withField("text"_q));
    settle();
    QVERIFY(context.isBuilt("b"_q));
    Document *b = context.find("b"_q);
    QCOMPARE(a->attached(), QList<Document *> { b });
    QCOMPARE(b->referencingDocuments(), QList<Document *> { a });
    QVERIFY(lost->attached().isEmpty() && changed->attached().isEmpty());
    QVERIFY(!a->isDirty());

    // A synchronous round serves them, too, and disposes of what served them.
    context.store("c"_q);
    context.built("d"_q, withField("$ref(0,c)"_q));
    context.finishIncubation();
    QVERIFY(context.isBuilt("c"_q));
}

void tst_References::replacedDataKeepsWhatStays()
{
    GraphContext context;
    Station *b = context.station("b"_q);
    Station *a = context.built("a"_q, withField("$ref(0,b)"_q));
    QCOMPARE(a->attached(), QList<Document *> { b });
    QSignalSpy attached(a, &Document::attachedDocumentsChanged);
    reload(a, withField("$ref(0,b)"_q));
    QCOMPARE(attached.count(), 0);
    reload(a, withField("$ref(0,a)"_q)); // a stored reference to itself enters unchecked
    QCOMPARE(storedReferences(a), QStringList { "a"_q });
    QVERIFY(b->referencingDocuments().isEmpty());
    QVERIFY(a->isComplete());
    a->remove();
    settle();
    QVERIFY(a->attached().isEmpty());
}

void tst_References::undoRestoresCounts()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    context.station("b"_q);
    Station *c = context.station("c"_q);
    a->setStructValue("s"_q, "f"_q, "$ref(0,b)"_q);
    context.recording = true;
    a->setStructValue("s"_q, "f"_q, "$ref(0,c)"_q);
    a->setStructValue("s"_q, "g"_q, "$ref(0,c)"_q);
    a->purgeReference(c);
    QVERIFY(storedReferences(a).isEmpty());
    for (int round = 0; round < 2; ++round) {
        context.undo();
        QCOMPARE(storedReferences(a), QStringList { "b"_q });
        QCOMPARE(a->attached().size(), 1);
        QVERIFY(c->referencingDocuments().isEmpty());
        context.redo();
        QVERIFY(a->attached().isEmpty());
    }
    delete c;
    context.undo();
    QCOMPARE(storedReferences(a), QStringList { "b"_q });
}

void tst_References::slotsMayWriteTheSameField()
{
    GraphContext context;
    Station *a = context.station("a"_q);
    Station *b = context.station("b"_q);
    Station *c = context.station("c"_q);
    {
        const SignalTrap trap(a, "attachedDocumentsChanged",
                              [&] { a->setStructValue("s"_q, "f"_q, "$ref(0,c)"_q); });
        a->setStructValue("s"_q, "f"_q, "$ref(0,b)"_q);
    }
    QCOMPARE(storedReferences(a), QStringList { "c"_q });
    QCOMPARE(a->attached(), QList<Document *> { c });
    QVERIFY(b->referencingDocuments().isEmpty());
}

void tst_References::purgesDeletedDocuments()
{
    GraphContext context;
    Station *b = context.station("b"_q);
    Station *a = context.station("a"_q);
    Station *pending = context.built("pending"_q, withField("$ref(0,b)"_q));
    for (int i = 0; i < 20; ++i) {
        const QString key = QString::number(i % 3);
        a->setStructValue(key, QString::number(i), i % 2 ? "$ref(0,b)"_q : "text"_q);
    }
    const SignalTrap trap(a, "structValueChanged",
                          [&] { a->setStructValue("new"_q, "field"_q, "x"_q); });
    b->remove();
    QVERIFY(storedReferences(a).isEmpty() && storedReferences(pending).isEmpty());
    for (int i = 0; i < 20; ++i) {
        QCOMPARE(a->getStructValue(QString::number(i % 3), QString::number(i)),
                 i % 2 ? QJsonValue() : QJsonValue("text"_q));
    }
    QVERIFY(b->referencingDocuments().isEmpty());
}

void tst_References::referencesBuildWhatIsMissing()
{
    GraphContext context;
    Station *a = context.built("a"_q, withField("$ref(0,b)"_q)); // not known yet
    settle();
    QVERIFY(a->references(0).isEmpty());
    context.store("b"_q, withField("$ref(0,a)"_q));
    QVERIFY(!context.isBuilt("b"_q));
    QCOMPARE(a->references(0), QList<QObject *> { context.find("b"_q) });
}

QTEST_GUILESS_MAIN(tst_References)
#include "tst_references.moc"
