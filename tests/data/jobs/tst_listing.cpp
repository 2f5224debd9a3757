// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/jobs/typelisting.h>

#include <QtCore/QJsonArray>
#include <QtCore/QUrlQuery>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A Context whose database has the documents of a view: those whose label begins with the type
/// that is asked for.
class ListingFixture : public ContextFixture
{
public:
    ListingFixture()
    {
        couch().setResponder([this](const FakeCouch::Call &call) { return answer(call); });
        tickByItself();
    }

    void store(const QString &id, const QString &created)
    {
        couch().store({ { "_id"_s, id }, { "type"_s, "tag"_s }, { "created"_s, created } });
        rows << QJsonObject { { "id"_s, id } };
    }

    std::optional<FakeCouch::Answer> answer(const FakeCouch::Call &call)
    {
        if (call.resource() != "by_type"_s) {
            return std::nullopt;
        }
        queries << QUrlQuery(call.url);
        const QJsonObject result { { "rows"_s, rows } };
        return FakeCouch::Answer { status, QJsonDocument(result).toJson(), {} };
    }

    int status = 200;
    QJsonArray rows { QJsonObject { { "id"_s, "missing"_s } }, QJsonObject() };
    QList<QUrlQuery> queries;
};

QString ids(const Listing &listing)
{
    QStringList ids;
    for (const Document *document : listing.documentList()) {
        ids << document->documentId();
    }
    return ids.join(QLatin1Char(' '));
}

} // namespace

class tst_Listing : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsWhatTheDatabaseNamesAndWhatIsNew()
    {
        ListingFixture fixture;
        fixture.store("old"_s, "2020-01-01T00:00:00Z"_s);
        fixture.store("newer"_s, "2021-01-01T00:00:00Z"_s);
        fixture.store("twin"_s, "2021-01-01T00:00:00Z"_s);
        fixture.create("local"_s);
        TypeListing listing(fixture.context());
        QSignalSpy changes(&listing, &Listing::documentsChanged);
        listing.setType("tag"_s);
        for (int i = 0; i < 10; ++i) {
            listing.update();
        }
        QTRY_COMPARE(ids(listing), "local newer twin old"_s);
        QCOMPARE(listing.status(), Listing::Loaded);
        QCOMPARE(fixture.queries.size(), 1);
        // It follows; but what does not change the list tells nobody.
        fixture.create("second"_s);
        QTRY_COMPARE(ids(listing), "second local newer twin old"_s);
        fixture->loadedDocument("old"_s)->remove();
        QTRY_COMPARE(ids(listing), "second local newer twin"_s);
        const auto count = changes.size();
        static_cast<LinkedDocument *>(fixture->loadedDocument("twin"_s))->setLabel("x"_s);
        listing.update();
        QTRY_COMPARE(fixture.queries.size(), 2);
        QTest::qWait(10);
        QCOMPARE(changes.size(), count);
        fixture.store("later"_s, "2022-01-01T00:00:00Z"_s);
        QMetaObject::invokeMethod(fixture.context(), "handleNewDocument", Q_ARG(QString, "x"_s));
        QTRY_COMPARE(ids(listing), "second local later newer twin"_s);
    }

    void asksForOneTypeAndNoMoreThanTheLimit_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("limit");
        QTest::addColumn<QString>("startKey");
        QTest::newRow("plain") << "tag"_s << -1 << "[\"tag\",[]]"_s;
        QTest::newRow("none") << "tag:product"_s << 0 << "[\"tag:product\",[]]"_s;
        QTest::newRow("odd") << "a+\"&"_s << 7 << "[\"a+\\\"&\",[]]"_s;
    }
    void asksForOneTypeAndNoMoreThanTheLimit()
    {
        QFETCH(int, limit);
        QFETCH(QString, type);
        QFETCH(QString, startKey);
        ListingFixture fixture;
        TypeListing listing;
        listing.setType(type);
        listing.setQueryLimit(limit);
        listing.setContext(fixture.context());
        QTRY_COMPARE(fixture.queries.size(), 1);
        const QUrlQuery query = fixture.queries.constFirst();
        const auto item = [&](const QString &name) {
            return query.queryItemValue(name, QUrl::FullyDecoded);
        };
        QCOMPARE(item("startkey"_s), startKey);
        QCOMPARE(item("endkey"_s), QString(startKey).replace("[]"_s, "null"_s));
        QCOMPARE(item("descending"_s), "true"_s);
        QCOMPARE(item("limit"_s), limit < 0 ? QString() : QString::number(limit));
        QVERIFY(!query.toString(QUrl::FullyEncoded).contains(QLatin1Char('+')));
    }

    void aQueryMayFail()
    {
        LogCapture log;
        ListingFixture fixture;
        fixture.store("a"_s, "2020-01-01T00:00:00Z"_s);
        fixture.status = 404;
        TypeListing listing(fixture.context());
        QTRY_VERIFY(log.contains("|critical|Listing has no query url"_s));
        listing.setType("tag"_s); // it is not stuck
        QTRY_VERIFY(fixture->primaryError());
        QCOMPARE(fixture->primaryError()->errorCode(), 404);
        QCOMPARE(fixture->primaryError()->severity(), ContextError::Blocking);
        QVERIFY(log.contains("database has no view by_type: install the design document"_s));
        QVERIFY(listing.status() == Listing::Updating && fixture->isBusy());
        fixture.status = 200;
        fixture->tryFixErrors();
        QTRY_COMPARE(ids(listing), "a"_s);
        QTRY_VERIFY(!fixture->primaryError() && !fixture->isBusy());
    }

    void anotherTypeStartsAnew()
    {
        ListingFixture fixture;
        fixture.store("a"_s, "2020-01-01T00:00:00Z"_s);
        TypeListing listing(fixture.context());
        listing.setType("tag"_s);
        fixture.couch().hold();
        QTRY_COMPARE(fixture.queries.size(), 1);
        listing.setType("product"_s);
        fixture.rows = {};
        fixture.couch().release();
        QTRY_COMPARE(fixture.queries.size(), 2);
        QTest::qWait(300); // what the first one named would have been loaded by now
        QCOMPARE(ids(listing), ""_s);
        ListingFixture other;
        other.store("b"_s, "2020-01-01T00:00:00Z"_s);
        listing.setContext(other.context());
        QTRY_COMPARE(ids(listing), "b"_s);
        listing.setContext(nullptr);
        QCOMPARE(ids(listing), ""_s);
    }

    void whatIsDestroyedLeavesAtOnce()
    {
        ListingFixture fixture;
        TypeListing listing(fixture.context());
        listing.setType("tag"_s);
        for (const QString &id : "a b c"_l) {
            fixture.create(id);
        }
        QTRY_COMPARE(listing.documentList().size(), 3);
        QSignalSpy changes(&listing, &Listing::documentsChanged);
        delete fixture->loadedDocument("b"_s);
        QCOMPARE(listing.documentList().size(), 2);
        QTRY_COMPARE(changes.size(), 1);
        fixture.destroyContext();
        QVERIFY(listing.documentList().isEmpty() && !listing.context());
        QTRY_COMPARE(changes.size(), 2);
    }
};

QTEST_GUILESS_MAIN(tst_Listing)
#include "tst_listing.moc"
