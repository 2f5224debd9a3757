// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/contextfixture.h"
#include "support/plaindata.h"
#include "support/testdocuments.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/documentregistration.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// The structs, lists and scopes of a document.
class tst_FreeForm : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        registerDocument<Station>();
        m_context = std::make_unique<EditContext>();
        m_station = create("own"_s);
    }

    void randomEditsFollowPlainData()
    {
        const QString given = qEnvironmentVariable("VORREL_TEST_SEED");
        const quint32 seed =
            given.isEmpty() ? QRandomGenerator::global()->generate() : given.toUInt();
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        ManualClock clock;
        for (const QString &id : "t0 t1 t2"_l) {
            create(id);
        }
        PlainData shown; // by signals alone
        QMap<QString, QString> parents;
        connect(m_station, &Station::structValueChanged, this,
                [&](const QString &key) { follow(shown, "s:"_s, key); });
        connect(m_station, &Station::listChanged, this,
                [&](const QString &key) { follow(shown, "l:"_s, key); });
        connect(m_station, &Station::listParentChanged, this, [&](const QSet<QString> &ids) {
            for (const QString &id : ids) {
                parents[id] = m_station->listParent(id);
            }
        });
        QVERIFY(m_station->listParent("any"_s).isEmpty()); // whoever asks is told from now on
        PlainHistory history(seed);
        for (int step = 0; step < steps; ++step) {
            const QByteArray trace =
                "VORREL_TEST_SEED=%1, step %2"_s.arg(seed).arg(step).toLatin1();
            clock.advance(std::chrono::milliseconds(501)); // steps do not merge
            history.step(m_context.get(), m_station);
            processEvents();
            const PlainData stored(m_station);
            QVERIFY2(stored == history.now, trace);
            QVERIFY2(stored.withoutEmpty() == shown.withoutEmpty(), trace);
            for (const QString &id : "t0 t1 t2"_l) {
                const bool isReferred = stored.texts().contains("$ref(0,%1)"_s.arg(id));
                QVERIFY2(m_station->hasReference(id.toLatin1(), 0) == isReferred, trace);
                QVERIFY2(m_station->attached().contains(find(id)) == isReferred, trace);
            }
            const QMap<QString, QString> expected = stored.parents();
            for (auto it = expected.begin(); it != expected.end(); ++it) {
                QVERIFY2(m_station->listParent(it.key()) == it.value(), trace);
                QVERIFY2(parents.value(it.key()) == it.value(), trace + it.key().toLatin1());
            }
        }
    }

    void pastedScopesLookLikeTheirSource()
    {
        const auto data = R"({"l:a": ["x", "y"], "s:a": {"n": 1}, "s:x": {"n": 2}, "l:x": ["z"],
            "s:z:deep": {"n": 3}, "s:a:own": {"n": 4}, "l:y:list": ["v"], "s:v": {"n": 5},
            "s:other": {"n": 6}, "s:a2": {"n": 7}})"_json;
        m_station->assignCustomData(data);
        const QJsonObject copy = m_station->copyScope("a"_s);
        QCOMPARE(copy.keys(), "l:a l:x l:y:list s:a s:a:own s:v s:x s:z:deep scope"_l);
        m_station->pasteScopeAs(copy, "a"_s, "b"_s);
        const PlainData all(m_station);
        QCOMPARE(all.shape("b"_s), all.shape("a"_s));
        QCOMPARE(m_station->scopeStructs("b"_s), "b:own"_l);
        QVERIFY(!m_station->getList("b"_s).contains("x"_s));
        m_station->deleteScope("b"_s);
        QVERIFY(PlainData(m_station) == PlainData(data));
    }

    void hostileDataDoesNoHarm_data()
    {
        QTest::addColumn<QString>("data");
        QTest::addColumn<int>("left"); // entries, when the scope "a" is deleted
        QTest::addColumn<int>("pasted");
        const auto row = [](const char *name, const QString &data, int left, int pasted) {
            QTest::newRow(name) << "{%1}"_s.arg(data) << left << pasted;
        };
        row("in itself", R"("l:a": ["a", "b"], "s:b": {"n": 1})"_s, 0, 2);
        row("ring", R"("l:a": ["b"], "l:b": ["a"], "s:b": {"n": 1})"_s, 0, 3);
        row("shared", R"("l:a": ["b", "c"], "l:b": ["d"], "l:c": ["d"], "s:d": {"n": 1})"_s, 0, 5);
        row("no texts", R"("l:a": ["", 1, null, {}], "s:": {}, "s:x::y": {}, "s:b": 5)"_s, 3, 1);
        row("marks", R"("l:a": ["_", "s", "l", "b:c"], "s:_": {"n": 1}, "s:s": {}, "l:l": [],
            "s:b:c": {}, "a": 1)"_s,
            4, 2);
        QString chain = R"("l:a": ["0"])"_s;
        QString ladder = chain; // with 2^20 ways
        for (int i = 0; i < 999; ++i) {
            chain += R"(, "l:%1": ["%2"])"_s.arg(i).arg(i + 1);
        }
        for (int i = 0; i < 20; ++i) {
            ladder += R"(, "l:%1": ["%2", "x%2"], "l:x%1": ["%2", "x%2"])"_s.arg(i).arg(i + 1);
        }
        row("chain", chain, 0, 1000);
        row("ladder", ladder, 1, 0); // refused
    }
    void hostileDataDoesNoHarm()
    {
        QFETCH(QString, data);
        QFETCH(int, left);
        QFETCH(int, pasted);
        const LogCapture log;
        const QJsonObject object = QJsonDocument::fromJson(data.toUtf8()).object();
        m_station->assignCustomData(object);
        const QJsonObject copy = m_station->copyScope("a"_s);
        record([&] { m_station->pasteScopeAs(copy, "a"_s, "copy"_s); });
        QCOMPARE(PlainData(m_station).size(), object.size() + pasted);
        QCOMPARE(log.count("Refusing to paste the scope a"_s), pasted ? 0 : 1);
        m_context->undo();
        for (const QString &id : "_ b:c"_l + QStringList(QString())) {
            m_station->deleteScope(id == "_"_s ? ""_s : id);
            m_station->moveListItem(id, ""_s, 0);
            m_station->removeListItem("a"_s, id.isEmpty() ? "none"_s : ""_s);
            QVERIFY(m_station->listParent("none"_s).isEmpty());
        }
        QVERIFY(PlainData(m_station) == PlainData(object));
        record([&] { m_station->deleteScope("a"_s); });
        QCOMPARE(PlainData(m_station).size(), left);
        m_context->undo();
        QVERIFY(PlainData(m_station) == PlainData(object));
    }

    void editsAnswerAndTell()
    {
        const LogCapture log;
        m_station->assignCustomData(R"({"s:a": {"x": 1, "y": 2}, "l:a": ["1", "2", "3"]})"_json);
        QStringList told;
        connect(m_station, &Station::structValueChanged, this,
                [&](const QString &key, const QString &field) { told << key + "."_s + field; });
        connect(m_station, &Station::listChanged, this, [&](const QString &key) { told << key; });
        const int sequence = m_station->changeSequenceNumber();
        QVERIFY(!m_station->setStructValue("a"_s, "x"_s, 1));
        QVERIFY(!m_station->setStructValue("new"_s, "x"_s, QJsonValue::Undefined));
        QVERIFY(m_station->hasStruct("new"_s)); // made though nothing is in it
        QVERIFY(m_station->setStruct("none"_s, {}) && !m_station->hasStruct("none"_s));
        QVERIFY(!m_station->deleteStruct("none"_s) && !m_station->moveStruct("a"_s, "a"_s));
        QVERIFY(m_station->newListItems("a"_s, 0, 0).isEmpty());
        QVERIFY(m_station->newListItems("a"_s, 0, std::numeric_limits<int>::max()).isEmpty());
        QVERIFY(log.contains("Refusing to make 2147483647 list items"_s));
        QVERIFY(!m_station->removeListItem("a"_s, 3) && !m_station->removeListItem("a"_s, -1));
        QVERIFY(!m_station->insertListItemBefore("a"_s, "new"_s, "1"_s)); // it only moves
        QVERIFY(told.isEmpty() && m_station->changeSequenceNumber() == sequence);

        QVERIFY(m_station->setStruct("a"_s, m_station->getStruct("a"_s)));
        QVERIFY(m_station->clearStructValue("a"_s, "x"_s));
        QCOMPARE(m_station->changeSequenceNumber(), sequence + 2);
        m_station->setList("a"_s, { "3"_s, "1"_s }, { { "2"_s, "b"_s, 7 } });
        QVERIFY(m_station->moveListItem("1"_s, "a"_s, 0)); // within its list
        QCOMPARE(m_station->getList("a"_s), QJsonArray({ "1"_s, "3"_s }));
        QCOMPARE(told, "a. a.x b a a"_l);
        m_context->beginRecordChanges(); // what stands alone divides edits of one field
        for (int number : { 1, 2 }) {
            m_station->setStructValue("a"_s, "x"_s, number);
            m_station->setStruct("a"_s, {});
            m_station->setStructValue("a"_s, "x"_s, 10 * number);
        }
        m_context->endRecordChanges();
        m_context->undo();
        m_context->redo();
        QCOMPARE(m_station->getStruct("a"_s), R"({"x": 20})"_json);

        QSet<QString> ids;
        static const QRegularExpression form("^[\\w\\-]{8,}$"_s);
        for (int i = 0; i < 1000; ++i) {
            ids << m_station->newListItemId();
            QVERIFY(form.match(*ids.begin()).hasMatch());
        }
        QCOMPARE(ids.size(), 1000);
    }

private:
    Station *create(const QString &id)
    {
        return static_cast<Station *>(LinkedDocument::create("station"_s, id, m_context.get()));
    }

    [[nodiscard]] Document *find(const QString &id) const { return m_context->loadedDocument(id); }

    /// Takes over what a signal has told of.
    void follow(PlainData &shown, const QString &prefix, const QString &key) const
    {
        const bool isStruct = prefix == "s:"_s;
        if (key.isEmpty()) {
            shown = PlainData(m_station);
        } else if (isStruct ? m_station->hasStruct(key) : !m_station->getList(key).isEmpty()) {
            shown[prefix + key] = isStruct ? QJsonValue(m_station->getStruct(key))
                                           : QJsonValue(m_station->getList(key));
        } else {
            shown.remove(prefix + key);
        }
    }

    void record(const std::function<void()> &edit)
    {
        m_context->beginRecordChanges();
        edit();
        m_context->endRecordChanges();
    }

    std::unique_ptr<EditContext> m_context;
    Station *m_station = nullptr;
};

QTEST_GUILESS_MAIN(tst_FreeForm)
#include "tst_freeform.moc"
