// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/jobs/documentdeleter.h>
#include <vorrel/data/jobs/referencecount.h>
#include <vorrel/data/jobs/referencecounter.h>

#include <QtCore/QJsonArray>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

const QString hubId = "hub+\"&"_s;

/// A Context of stations, whose database says who refers to whom.
struct Network : ContextFixture
{
    Network()
        : ContextFixture(new TestContext)
    {
        couch().setResponder([this](const FakeCouch::Call &call) { return answer(call); });
        context()->setServiceUrl(QUrl("http://couch.test:5984/proxy//"_s));
        tickByItself();
    }
    TestContext *stations() const { return static_cast<TestContext *>(context()); }
    std::optional<FakeCouch::Answer> answer(const FakeCouch::Call &call)
    {
        if (call.resource() != "references"_s) {
            return std::nullopt;
        }
        queries << call;
        QJsonArray rows;
        const bool isOfHub = (call.body + call.url.query().toUtf8()).contains("hub");
        for (const QString &id : isOfHub ? referrers : QStringList()) {
            couch().store({ { "_id"_s, id }, { "type"_s, "station"_s }, { "next"_s, hubId } });
            rows << QJsonObject { { "id"_s, id }, { "key"_s, hubId } };
        }
        const QByteArray body = QJsonDocument(QJsonObject { { "rows"_s, rows } }).toJson();
        return fault.value_or(FakeCouch::Answer { 200, body, {} });
    }
    Station *const hub = stations()->create(hubId);
    Station *const lone = stations()->create("lone"_s);
    QStringList referrers { "far"_s }; // of the hub
    QList<FakeCouch::Call> queries;
    std::optional<FakeCouch::Answer> fault;
    const QString view = "http://couch.test:5984/proxy/"_s + context()->database()
        + "/_design/tessaro/_view/references?"_s;
};

void add(ReferenceCounter &counter, Document *document)
{
    auto list = counter.documents();
    list.append(&list, document);
}

} // namespace

class tst_References : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void countsWhatIsStoredAndWhatIsHere()
    {
        Network network;
        network.referrers = "far far waiting near lone gone"_l;
        network.stations()->store("waiting"_s, { { "next"_s, hubId } });
        for (const QString &id : "near gone unsaved"_l) {
            network.stations()->create(id)->setNext(network.hub);
        }
        network.stations()->find("gone"_s)->remove();
        network.stations()->find("near"_s)->newNote(""_s)->setStation(network.hub); // unheld
        ReferenceCounter counter;
        add(counter, network.hub);
        add(counter, nullptr);
        add(counter, network.lone);
        ReferenceCount count;
        count.setDocument(network.hub);
        QTRY_COMPARE(count.count(), 4); // far, waiting, near, unsaved
        QCOMPARE(network.queries.at(0).url.toString(QUrl::FullyEncoded),
                 network.view + "key=%22hub%2B%5C%22%26%22&reduce=false"_s);
        QTRY_COMPARE(counter.referenceCount(network.hub), 6); // what is stored, and unsaved
        QCOMPARE(network.queries.at(1).url, QUrl(network.view + "reduce=false"_s));
        QCOMPARE(network.queries.at(1).body, "{\"keys\":[\"hub+\\\"&\",\"lone\"]}");
        QVERIFY(counter.isReferenced(network.hub) && !network.stations()->isBuilt("waiting"));
    }

    void aCountFollowsItsDocument()
    {
        Network network;
        network.couch().hold();
        ReferenceCount count;
        count.setDocument(network.hub);
        count.update();
        QTRY_COMPARE(network.queries.size(), 1);
        count.setDocument(network.lone); // nobody waits for the first answer any more
        network.couch().release();
        QTRY_COMPARE(count.status(), ReferenceCount::Ready);
        QVERIFY(count.count() == 0 && network.queries.size() == 2);
        count.setDocument(network.hub);
        QTRY_COMPARE(count.count(), 1);
        network.couch().hold();
        count.update();
        QTRY_COMPARE(network.queries.size(), 4);
        delete network.hub;
        network.couch().release();
        QTRY_VERIFY(count.status() == ReferenceCount::Ready && count.count() == 0);
        count.setDocument(network.lone);
        QTRY_COMPARE(network.queries.size(), 5);
        network.destroyContext(); // with the job
        QTRY_VERIFY(count.status() == ReferenceCount::Ready && !count.document());
    }

    void aCounterAnswersForWhatItAskedFor()
    {
        LogCapture log;
        Network network;
        ReferenceCounter counter;
        add(counter, network.hub);
        QVERIFY(!counter.isReferenced(network.hub) && counter.referenceCount(network.hub) == 0);
        QCOMPARE(log.count("called on busy ReferenceCounter"_s), 2);
        add(counter, network.stations()->create("dying"_s)); // still in time
        network.couch().hold();
        QTRY_COMPARE(network.queries.size(), 1);
        add(counter, network.lone);
        delete network->loadedDocument("dying"_s);
        network.couch().release();
        QTRY_COMPARE(counter.referenceCount(network.hub), 1);
        QCOMPARE(counter.referenceCount(network.lone), 0);
        QVERIFY(log.contains("called on document not checked by ReferenceCounter"_s));
        counter.scheduleUpdate();
        QTRY_COMPARE(network.queries.size(), 2);
        QCOMPARE(network.queries.constLast().keys(), QStringList({ hubId, "lone"_s }));
        network.destroyContext();
        QTRY_COMPARE(counter.status(), ReferenceCounter::Ready);
    }

    void aQueryMayFail()
    {
        for (const int status : { 404, 500, 200, 0 }) { // no view, no answer of one, network cut
            LogCapture log;
            Network network;
            network.fault = FakeCouch::Answer { status, "<html>", {}, {} };
            network.fault->error = QNetworkReply::NetworkError(status == 0 ? 2 : 0);
            ReferenceCount count;
            count.setDocument(network.hub);
            ReferenceCounter counter;
            add(counter, network.hub);
            DocumentDeleter deleter;
            deleter.setDocument(network.hub);
            QTRY_COMPARE(network->errors().size(), 2);
            QCOMPARE(network->primaryError()->severity(), ContextError::Major);
            QVERIFY(deleter.status() == DocumentDeleter::Error && deleter.locked());
            QCOMPARE(log.count("|critical|Reference fetch request failed: %1"_s.arg(status)), 1);
            QCOMPARE(log.count("no view references: install the"_s), status == 404 ? 3 : 0);
            QVERIFY(count.status() == ReferenceCount::Loading && network->isBusy());
            network.fault.reset();
            count.setDocument(network.lone);
            QTRY_COMPARE(count.status(), ReferenceCount::Ready);
            network->tryFixErrors();
            QTRY_VERIFY(!network->isBusy() && network->errors().isEmpty());
            QCOMPARE(counter.referenceCount(network.hub), 1);
        }
    }

    void theDeleterFindsOutAndFollows()
    {
        LogCapture log;
        Network network;
        Station *near = network.stations()->create("near"_s);
        near->setNext(network.hub);
        near->newNote(""_s)->setStation(network.hub); // one that nobody holds
        DocumentDeleter deleter;
        deleter.setDocument(network.lone);
        QTRY_VERIFY(!deleter.locked() && network.couch().calls().size() == 1);
        // Not even a slot finds the lock of the former document.
        connect(&deleter, &DocumentDeleter::documentChanged, &deleter,
                &DocumentDeleter::deleteDocument);
        network.couch().hold();
        deleter.setDocument(network.hub);
        QTRY_COMPARE(network.queries.size(), 2);
        deleter.setDocument(network.lone);
        QCOMPARE(network.couch().openCount(), 0);
        deleter.setDocument(network.hub);
        network.couch().release();
        QTRY_COMPARE(deleter.status(), DocumentDeleter::LoadingReferences);
        deleter.deleteDocument();
        QCOMPARE(log.count("|warning|Cannot delete with status"_s), 4);
        QTRY_COMPARE(deleter.lockReason(), DocumentDeleter::NotLocked);
        QCOMPARE(deleter.dependantCount(), 2);
        network.stations()->setLevel("far"_s, Document::ReadAccess);
        QTRY_COMPARE(deleter.lockReason(), DocumentDeleter::ImmutableDependant);
        deleter.deleteDocument();
        QVERIFY(log.contains("Cannot delete locked document, reason:"_s)
                && !network.hub->deleted());
        network.stations()->setLevel(hubId, Document::ReadAccess);
        QTRY_COMPARE(deleter.lockReason(), DocumentDeleter::NoWriteAccess);
        network.stations()->setLevel(hubId, Document::WriteAccess);
        delete network->loadedDocument("far"_s);
        QCOMPARE(deleter.dependants(), QList<LinkedDocument *> { near });
        QTRY_VERIFY(!deleter.locked());
        near->setNext(nullptr);
        QTRY_VERIFY(!deleter.referenced());
        deleter.deleteDocument();
        QVERIFY(network.hub->deleted() && !network.lone->deleted());
        network.destroyContext();
        QVERIFY(deleter.dependants().isEmpty() && !deleter.document());
        QTRY_VERIFY(deleter.status() == DocumentDeleter::Null && deleter.locked());
    }
};

QTEST_GUILESS_MAIN(tst_References)
#include "tst_references.moc"
