// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/context/documentcache.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_DocumentCache : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void oneCacheIsSharedByNameAndDiesWithItsLastUser()
    {
        QSharedPointer<DocumentCache> first = DocumentCache::getCache("one"_s);
        QSharedPointer<DocumentCache> second = DocumentCache::getCache("one"_s);
        QCOMPARE(first, second);
        QVERIFY(DocumentCache::getCache("two"_s) != first);
        first->insert("a"_s, QJsonObject());
        first.reset();
        QVERIFY(DocumentCache::getCache("one"_s)->contains("a"_s));
        second.reset();
        QVERIFY(!DocumentCache::getCache("one"_s)->contains("a"_s));
    }

    void keepsWhatWasInsertedLast()
    {
        DocumentCache cache;
        QVERIFY(cache.find("ü"_s).isEmpty());
        QCOMPARE(cache.insert("ü"_s, QByteArray(R"( {"n" : 1} )")), R"({"n":1})"_json);
        cache.insert("b"_s, QJsonObject());
        cache.insert("ü"_s, R"({"n":2})"_json);
        cache.insert("c"_s, QJsonObject());
        for (int i = 0; i < 2; ++i) {
            // The mark is made for the reader and not stored.
            QCOMPARE(cache.find("ü"_s), R"({"n":2,"wasCached":true})"_json);
        }
        cache.invalidate("ü"_s);
        cache.invalidate("unknown"_s);
        QVERIFY(!cache.contains("ü"_s) && cache.find("ü"_s).isEmpty());
        QVERIFY(cache.contains("b"_s) && cache.contains("c"_s));
    }

    void findsSeveralInTheirOrder()
    {
        DocumentCache cache;
        for (const QString &id : "a b c"_l) {
            cache.insert(id, { { "_id"_s, id } });
        }
        QStringList found;
        const QList<QJsonObject> objects = cache.find("c gone a c"_l);
        for (const QJsonObject &object : objects) {
            found << object.value("_id"_s).toString();
            QVERIFY(object.value("wasCached"_s).toBool());
        }
        QCOMPARE(found, "c a c"_l);
    }

    void refusesWhatIsNoJson()
    {
        LogCapture log;
        DocumentCache cache;
        cache.insert("a"_s, R"({"n":1})"_json);
        for (const char *json : { "", "not json", R"({"_id":"a")" }) {
            QVERIFY(cache.insert("a"_s, QByteArray(json)).isEmpty());
            QVERIFY(cache.insert("b"_s, QByteArray(json)).isEmpty());
        }
        QCOMPARE(log.count("vorrel.doccache|critical|Failed to parse JSON: "_s), 6);
        QCOMPARE(cache.find("a"_s).value("n"_s).toInt(), 1);
        QVERIFY(!cache.contains("b"_s));
    }

    void invalidatesAllButOneRevision()
    {
        DocumentCache cache;
        cache.insert("same"_s, R"({"_rev":"2-x"})"_json);
        cache.insert("older"_s, R"({"_rev":"1-x"})"_json);
        cache.insert("none"_s, QJsonObject());
        for (const QString &id : "same older none unknown"_l) {
            cache.invalidate(id, "2-x"_s);
            QCOMPARE(cache.contains(id), id == "same"_s);
        }
    }
};

QTEST_GUILESS_MAIN(tst_DocumentCache)
#include "tst_documentcache.moc"
