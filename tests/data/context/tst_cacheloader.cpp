// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/loaderfixture.h"

#include <vorrel/data/context/cacheloader.h>
#include <vorrel/data/context/documentcache.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

struct CacheFixture : LoaderFixture
{
    CacheFixture()
        : LoaderFixture([](Context *context) { return new CacheLoader(context); })
    { }

    void put(const QString &id, const QByteArray &entry)
    {
        context()->documentCache()->insert(id, entry);
    }
};

} // namespace

class tst_CacheLoader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void answersLaterAndOnlyWhatTheCacheHolds()
    {
        CacheFixture fixture;
        QSignalSpy loaded(fixture.loader, &Loader::loaded);
        QVERIFY(!fixture.load("a"_l));
        fixture.put("a"_s, R"({"_id":"a"})");
        QVERIFY(fixture.load("a"_l));
        QCOMPARE(loaded.size(), 0);
        processEvents();
        QCOMPARE(loaded,
                 QList<QVariantList>({ { "a"_s, R"({"_id":"a","wasCached":true})"_json } }));
        Context closed; // no database, so no cache
        QVERIFY(!CacheLoader(&closed).load("a"_s));
    }

    void underTheBypassPolicyTheDatabaseIsReadAndTheCacheFilled()
    {
        CacheFixture fixture;
        fixture.store("a"_s);
        fixture.put("a"_s, R"({"_id":"a","type":"tag","_rev":"0-x"})");
        fixture->setContentFetchPolicy(Context::BypassDocumentCachePolicy);
        QCOMPARE(fixture.load("a"_s)->revision(), "1-a"_s);
        QCOMPARE(fixture->documentCache()->find("a"_s).value("_rev"_s).toString(), "1-a"_s);
    }

    void anUnusableEntryIsDroppedAndTheDatabaseAsked()
    {
        for (const char *entry :
             { "{}", "[]", R"({"type":"tag"})", R"({"_id":"b","type":"tag"})", R"({"_id":1})" }) {
            CacheFixture fixture;
            fixture.put("a"_s, entry);
            QVERIFY(fixture.load("a"_l));
            processEvents();
            QCOMPARE(fixture.answers, "failed a"_lines);
            QVERIFY(!fixture.load("a"_l));

            fixture.put("a"_s, entry);
            fixture.store("a"_s);
            LinkedDocument *document = fixture.load("a"_s);
            QVERIFY(document && !document->wasCached());
            QCOMPARE(fixture.couch().calls().size(), 1);
        }
    }

    void anotherDatabaseGetsNothingOfTheFormerOne()
    {
        CacheFixture fixture;
        const QSharedPointer<DocumentCache> former = fixture->documentCache();
        fixture.put("a"_s, R"({"_id":"a"})");
        QVERIFY(fixture.load("a"_l));
        fixture->setDatabase("other"_s);
        processEvents();
        QCOMPARE(fixture.answers, "failed a"_lines);
        QVERIFY(former->contains("a"_s)); // nothing is wrong with it
    }

    void slowSlotsLeaveTheLoopItsTurnsAndMayLoadMore()
    {
        CacheFixture fixture;
        QStringList events;
        QObject::connect(fixture.loader, &Loader::loaded, [&](const QString &id) {
            events << id;
            QMetaObject::invokeMethod(
                fixture.loader, [&] { events << "turn"_s; }, Qt::QueuedConnection);
            useUpTheSlice();
            QVERIFY(id == "c"_s || fixture.load("c"_l));
        });
        for (const QString &id : "a b c"_l) {
            fixture.put(id, R"({"_id":"%1"})"_s.arg(id).toUtf8());
        }
        QVERIFY(fixture.load("a b"_l));
        processEvents();
        QCOMPARE(events, "a turn b turn c turn c turn"_l);
    }

    void mayDieInItsSlots()
    {
        for (const QString &answer : "loaded a|failed a"_lines) {
            CacheFixture fixture;
            fixture.put("a"_s, answer == "loaded a"_s ? R"({"_id":"a"})" : "{}");
            fixture.put("b"_s, "{}");
            fixture.deadly = answer;
            QVERIFY(fixture.load("a b"_l));
            processEvents();
            QVERIFY(!fixture.loader);
            QCOMPARE(fixture.answers, QStringList(answer));
        }
    }
};

QTEST_GUILESS_MAIN(tst_CacheLoader)
#include "tst_cacheloader.moc"
