// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

class tst_ReloadingUpdateHandler : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aDocumentShowsWhatOthersMadeOfIt_data()
    {
        QTest::addColumn<QString>("event");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("requests");
        QTest::newRow("edit") << QString() << "theirs"_s << 1;
        QTest::newRow("two edits") << "again"_s << "theirs"_s << 2;
        QTest::newRow("failure") << "failure"_s << "theirs"_s << 2;
        QTest::newRow("unsaved edit") << "dirty"_s << "mine"_s << 0;
        QTest::newRow("edit meanwhile") << "dirty meanwhile"_s << "mine"_s << 1;
        QTest::newRow("deleted") << "deleted"_s << "before"_s << 1;
        QTest::newRow("removed meanwhile") << "removed"_s << QString() << 1;
        QTest::newRow("switched off") << "off"_s << "before"_s << 1;
    }
    void aDocumentShowsWhatOthersMadeOfIt()
    {
        QFETCH(QString, event);
        ManualClock clock;
        LogCapture log;
        ContextFixture fixture;
        fixture->setFollowsRemoteEdits(true);
        fixture.couch().store(R"({"_id":"a","type":"tag","label":"before","name":"n",
                                  ":data":{"s:x":{"y":1}}})"_json);
        fixture.store("new"_s);
        const QPointer<LinkedDocument> document = fixture.load("a"_s);
        fixture.couch().store(R"({"_id":"a","_rev":"2-a","type":"tag","label":"theirs","name":"m",
                                  "references":["new"]})"_json);
        const auto asked = [&] {
            const auto calls = fixture.couch().calls();
            return int(std::count_if(calls.begin(), calls.end(),
                                     [](const FakeCouch::Call &call) { return call.verb == "GET"; }));
        };
        const auto announce = [&] {
            QMetaObject::invokeMethod(fixture.context(), "handleNewRevision",
                                      Q_ARG(QString, "a"_s), Q_ARG(QString, "2-a"_s));
        };
        if (event == "dirty"_s) {
            document->setLabel("mine"_s);
        } else if (event == "failure"_s) {
            fixture.couch().failNext(1, 500);
        } else if (event == "deleted"_s) {
            fixture.couch().markDeleted("a"_s);
        }
        QSignalSpy labels(document, &LinkedDocument::labelChanged);
        fixture.couch().hold();
        announce();
        processEvents();
        if (event == "dirty meanwhile"_s) {
            document->setLabel("mine"_s);
        } else if (event == "again"_s) {
            announce();
            announce();
        } else if (event == "removed"_s) {
            fixture->removeDocument("a"_s);
            processEvents();
        } else if (event == "off"_s) {
            fixture->setFollowsRemoteEdits(false);
        }
        fixture.couch().release();
        processEvents();
        clock.advance(5s);
        QVERIFY(fixture.finishLoading());
        QTEST(document ? document->label() : QString(), "label");
        QTEST(asked(), "requests");
        QCOMPARE(log.count("|warning|Document a was edited by somebody else"_s),
                 event.startsWith("dirty"_s) ? 1 : 0);
        if (document && document->revision() == "2-a"_s) {
            QCOMPARE(labels.size(), 1);
            QVERIFY(fixture->isLoaded("new"_s) && !document->isDirty());
            QVERIFY(document->getStruct("x"_s).isEmpty());
            QCOMPARE(document->property("name").toString(), "m"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_ReloadingUpdateHandler)
#include "tst_reloadingupdatehandler.moc"
