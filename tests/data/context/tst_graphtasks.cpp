// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/taskfixture.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_GraphTasks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void runInOrderAndInOneSlice()
    {
        TaskFixture fixture;
        fixture.add("a", [&] {
            fixture.postEvent();
            fixture.add("c");
            QCOMPARE(fixture.living, 3);
        });
        fixture.add("b");
        QVERIFY(fixture.log.isEmpty());
        processEvents();
        QCOMPARE(fixture.log, "a b c event"_l);
        QCOMPARE(fixture.living, 0);
        fixture.add("d");
        processEvents();
        QCOMPARE(fixture.log.constLast(), "d"_s);
    }

    void aSlowTaskEndsTheSlice()
    {
        TaskFixture fixture;
        fixture.add("a", [&] {
            fixture.postEvent();
            useUpTheSlice();
        });
        fixture.add("b");
        processEvents();
        QCOMPARE(fixture.log, "a event b"_l);
    }

    void mayDestroyTheContextAndGoUnrunWithIt()
    {
        TaskFixture fixture;
        fixture.add("a", [&] { fixture.destroyContext(); });
        fixture.add("b");
        // Two that hold the same document, which must not go twice.
        fixture->removeDocument(fixture.create("x"_s, "1-x"_s));
        QVERIFY(fixture.create("x"_s));
        processEvents();
        QVERIFY(!fixture.context());
        QCOMPARE(fixture.log, "a"_l);
        QCOMPARE(fixture.living, 0);
    }

    void reportTheEditsOfOneTurnOnce()
    {
        ContextFixture fixture;
        LinkedDocument *document = fixture.create("a"_s);
        processEvents();
        QSignalSpy reports(fixture.context(), &Context::documentChanged);
        document->setLabel("one"_s);
        document->setLabel("two"_s);
        QCOMPARE(reports.size(), 0);
        processEvents();
        QCOMPARE(reports.size(), 1);
        QCOMPARE(reports.constFirst().constFirst().value<Document *>(), document);
        document->setLabel("three"_s);
        document->scheduleAccessLevelUpdate();
        delete document; // nothing is left to report on
        processEvents();
        QCOMPARE(reports.size(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_GraphTasks)
#include "tst_graphtasks.moc"
