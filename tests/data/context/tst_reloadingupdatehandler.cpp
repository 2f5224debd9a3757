// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_ReloadingUpdateHandler : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aDocumentShowsWhatOthersMadeOfIt_data()
    {
        QTest::addColumn<QString>("label");
        QTest::newRow("edit") << "theirs"_s;
        QTest::newRow("deletion taken back") << "theirs"_s;
        QTest::newRow("edited before") << "mine"_s;
        QTest::newRow("edited meanwhile") << "mine"_s;
        QTest::newRow("removed") << QString();
        QTest::newRow("switched off") << "before"_s;
    }
    void aDocumentShowsWhatOthersMadeOfIt()
    {
        const QString event = QString::fromLatin1(QTest::currentDataTag());
        LogCapture log;
        ContextFixture fixture;
        fixture->setFollowsRemoteEdits(true);
        fixture.couch().store(R"({"_id":"a","type":"tag","label":"before","name":"n",
                                  ":data":{"s:x":{"y":1}}})"_json);
        fixture.store("new"_s);
        const QPointer<LinkedDocument> document = fixture.load("a"_s);
        fixture.couch().store(R"({"_id":"a","_rev":"2-a","type":"tag","label":"theirs",
                                  "deleted":false,"references":["new"]})"_json);
        if (event == "deletion taken back"_s) {
            document->reload(R"({"_id":"a","_rev":"1-a","type":"tag","label":"before",
                                 "deleted":true})"_json);
        }
        document->setLabel(event == "edited before"_s ? "mine"_s : "before"_s);
        fixture.couch().hold();
        QMetaObject::invokeMethod(fixture.context(), "handleNewRevision", Q_ARG(QString, "a"_s),
                                  Q_ARG(QString, "2-a"_s));
        processEvents();
        if (event == "edited meanwhile"_s) {
            document->setLabel("mine"_s);
        } else if (event == "removed"_s) {
            delete document;
        } else if (event == "switched off"_s) {
            fixture->setFollowsRemoteEdits(false);
        }
        fixture.couch().release();
        processEvents();
        QVERIFY(fixture.finishLoading());
        QTEST(document ? document->label() : QString(), "label");
        const bool isReloaded = document && document->label() == "theirs"_s;
        QCOMPARE(log.count("|warning|Document a was edited by somebody else"_s),
                 event.startsWith("edited"_s) ? 1 : 0);
        QCOMPARE(fixture->isLoaded("new"_s), isReloaded);
        QVERIFY(!isReloaded || (!document->isDirty() && document->getStruct("x"_s).isEmpty()));
        QVERIFY(!document || !document->deleted());
    }
};

QTEST_GUILESS_MAIN(tst_ReloadingUpdateHandler)
#include "tst_reloadingupdatehandler.moc"
