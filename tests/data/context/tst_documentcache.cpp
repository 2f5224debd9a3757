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
    void isSharedByNameAndDiesWithItsLastUser()
    {
        QSharedPointer<DocumentCache> first = DocumentCache::getCache("one"_s);
        QSharedPointer<DocumentCache> second = DocumentCache::getCache("one"_s);
        QVERIFY(first == second && first != DocumentCache::getCache("two"_s));
        first->insert("a"_s, QJsonObject());
        first.reset();
        QVERIFY(DocumentCache::getCache("one"_s)->contains("a"_s));
        second.reset();
        QVERIFY(!DocumentCache::getCache("one"_s)->contains("a"_s));
    }

    void findsWhatWasInsertedLastUntilItIsInvalidated()
    {
        LogCapture log;
        DocumentCache cache;
        cache.insert("ü"_s, QByteArray(R"({"n":1})"));
        QCOMPARE(cache.insert("ü"_s, QByteArray(R"({"_rev":"2-x"})")), R"({"_rev":"2-x"})"_json);
        cache.insert("b"_s, R"({"_rev":"1-x"})"_json);
        QVERIFY(cache.insert("ü"_s, QByteArray(R"({"_id":"ü")")).isEmpty()); // refused
        QCOMPARE(log.count("vorrel.doccache|critical|Failed to parse JSON: "_s), 1);
        const QJsonObject found = R"({"_rev":"2-x","wasCached":true})"_json;
        QCOMPARE(cache.find("ü gone ü"_l), QList<QJsonObject>({ found, found }));
        for (const QString &id : "ü b gone"_l) {
            cache.invalidate(id, "2-x"_s); // all but this revision
        }
        QVERIFY(cache.contains("ü"_s) && !cache.contains("b"_s));
        cache.invalidate("ü"_s);
        QVERIFY(cache.find("ü"_s).isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_DocumentCache)
#include "tst_documentcache.moc"
