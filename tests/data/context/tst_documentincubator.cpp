// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/incubatornest.h"
#include "support/literals.h"

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_DocumentIncubator : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void worksInOrderAndTellsItsState()
    {
        IncubatorNest nest;
        nest.lay("a", 2).end = [&] { nest.lay("c"); };
        nest.lay("b");
        QVERIFY(nest.incubator->isIncubating() && nest.log.isEmpty());
        QCOMPARE(nest.changes.size(), 1);
        processEvents();
        QCOMPARE(nest.log, "a a a a! b b! c c!"_l);
        QVERIFY(!nest.incubator->isIncubating());
        QCOMPARE(nest.changes.size(), 2);
    }

    void otherEventsComeFirstAfterASlowObject()
    {
        IncubatorNest nest;
        nest.lay("a", 1).action = useUpTheSlice;
        nest.lay("b");
        const auto postEvent = [&](const std::function<void()> &event) {
            QMetaObject::invokeMethod(nest.incubator, event, Qt::QueuedConnection);
        };
        // It is posted when the incubator has already asked for its next turn.
        postEvent([&] { postEvent([&] { nest.log << "event"_s; }); });
        processEvents();
        QCOMPARE(nest.log, "a event a a! b b!"_l);
    }

    void anObjectThatNeverEndsDoesNotBlockTheLoop()
    {
        IncubatorNest nest;
        Egg &egg = nest.lay("a", 1 << 30);
        processEvents();
        const auto count = nest.log.size();
        processEvents();
        QVERIFY(nest.log.size() > count);
        egg.turns = 0;
        processEvents();
        QVERIFY(!nest.incubator->isIncubating());
    }

    void drainsAtOnceWithoutEndingTheObjects()
    {
        IncubatorNest nest;
        nest->finishIncubation(); // nothing to do
        QCOMPARE(nest.changes.size(), 0);
        Egg &egg = nest.lay("a", 1);
        nest.lay("b");
        egg.action = [&] {
            egg.action = nullptr;
            useUpTheSlice();
            nest.lay("c");
        };
        nest->finishIncubation();
        QCOMPARE(nest.log, "a a b c"_l);
        QVERIFY(!nest.incubator->isIncubating());
        QCOMPARE(nest.changes.size(), 2);
        processEvents(); // the event for the first one is still on its way
        QCOMPARE(nest.log, "a a b c"_l);
        QCOMPARE(nest.changes.size(), 3);

        Egg &inner = nest.lay("d");
        inner.action = [&] {
            inner.action = nullptr;
            nest->finishIncubation(); // from inside
        };
        nest.lay("e");
        processEvents();
        QCOMPARE(nest.log.mid(4), "d e d!"_l); // which passes the one that is served
        QVERIFY(!nest.incubator->isIncubating());
    }

    void objectsMayDestroyTheContext_data()
    {
        QTest::addColumn<QString>("when");
        for (const char *when : { "incubate", "finishIncubation", "drain", "waiting" }) {
            QTest::newRow(when) << QString::fromLatin1(when);
        }
    }
    void objectsMayDestroyTheContext()
    {
        QFETCH(QString, when);
        IncubatorNest nest;
        Egg &egg = nest.lay("a");
        (when == "finishIncubation"_s ? egg.end : egg.action) = [&] { nest.destroyContext(); };
        nest.lay("b");
        if (when == "drain"_s) {
            nest->finishIncubation();
        } else if (when == "waiting"_s) {
            nest.destroyContext();
        }
        processEvents();
        QVERIFY(!nest.context());
        QVERIFY(!nest.log.contains("b"_s));
    }
};

QTEST_GUILESS_MAIN(tst_DocumentIncubator)
#include "tst_documentincubator.moc"
