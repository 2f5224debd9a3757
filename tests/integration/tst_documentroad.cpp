// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/documents/productgroup.h>

#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

constexpr int patience = 60000; // ms; the machine may be busy
constexpr int size = 1000;

/// Whom document \p number refers to in the sample: the group above a product group, the group and
/// three other documents of a product, the location of a device. 0 leads to all.
QList<int> targetsOf(int number)
{
    if (number == 0) {
        QList<int> all;
        for (int other = 1; other < size; ++other) {
            all << other;
        }
        return all;
    }
    switch (number % 4) {
    case 1:
        return number < 5 ? QList<int>() : QList<int> { (number / 8) * 4 + 1 };
    case 2:
        return { number - 1, (number * 7) % 250 * 4 + 3, (number * 11) % 250 * 4 + 3 };
    case 3:
        return {};
    default:
        return { number - 1 };
    }
}

QString idOf(int number)
{
    return QStringLiteral("road.%1").arg(number);
}

/// The same as stored: by typed properties and by references in free data.
QJsonObject storedDocument(int number)
{
    QJsonObject document { { "_id"_s, idOf(number) } };
    QStringList ids;
    for (int target : targetsOf(number)) {
        ids << idOf(target);
    }
    document["references"_s] = QJsonArray::fromStringList(ids);
    const bool isRoot = number == 0;
    const QString types[] = { "device"_s, "group:product"_s, "product"_s, "location"_s };
    const QString links[] = { "location"_s, "parentGroup"_s, "productGroup"_s, QString() };
    document["type"_s] = isRoot ? "data:road"_s : types[number % 4];
    if (!isRoot && !ids.isEmpty()) {
        document[links[number % 4]] = ids.takeFirst();
    }
    QJsonObject fields;
    for (const QString &id : std::as_const(ids)) {
        fields[id] = "$ref(0,%1)"_s.arg(id);
    }
    document[":data"_s] = QJsonObject { { "s:links"_s, fields } };
    return document;
}

} // namespace

class tst_DocumentRoad : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fromTheDatabaseToTheGraph()
    {
        LogCapture log;
        DevSite site;
        QList<QJsonObject> stored;
        for (int number = 0; number < size; ++number) {
            stored << storedDocument(number);
        }
        QVERIFY2(site.open({}) && site.server.store(stored), qPrintable(site.server.errorString()));
        Context &context = site.context;
        const int builtIn = int(context.documents().size());
        int built = 0;
        context.addCreationHandler("group"_s, [&](Document *) { ++built; });
        const QSignalSpy added(&context, &Context::documentAdded);

        // Wanted, fetched with all that it leads to, and cached.
        QPointer<LoadRequest> request(context.loadDocument(idOf(0)));
        const QSignalSpy finished(request, &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        QCOMPARE(site.batches.value(0), QStringList { idOf(0) });
        QCOMPARE(site.batches.size(), 1 + (size - 1 + 24) / 25);
        QVERIFY(context.documentCache()->contains(idOf(size - 1)));

        // Nodes come after what they refer to; nothing is built before it is asked for.
        Graph graph;
        for (int number = 0; number < size; ++number) {
            QStringList &ids = graph[idOf(number)];
            for (int target : targetsOf(number)) {
                ids << idOf(target);
            }
        }
        QCOMPARE(faultOf(graph, { idOf(0) }, site.order), QByteArray());
        QCOMPARE(int(added.size()), 0);
        QTRY_VERIFY(!request);

        // One object each; its references follow, and the graph with them.
        Document *root = context.loadedDocument(idOf(0));
        QVERIFY(root);
        QTRY_VERIFY_WITH_TIMEOUT(root->isComplete() && int(added.size()) == size, patience);
        QCOMPARE(int(context.documents().size()), builtIn + size);
        QCOMPARE(built, size / 4);
        const auto faults = [&] {
            QStringList wrong;
            for (auto it = graph.begin(); it != graph.end(); ++it) {
                const DocumentNode *node = context.documentNode(it.key().toLatin1());
                QSet<QString> targets;
                for (const DocumentEdge *edge : node->outgoing()) {
                    targets << QString::fromLatin1(edge->target->id());
                }
                if (targets != QSet<QString>(it->begin(), it->end())) {
                    wrong << it.key();
                }
            }
            return wrong;
        };
        QTRY_COMPARE_WITH_TIMEOUT(faults(), QStringList(), patience);
        QVERIFY(!context.hasLocalChanges());
        QVERIFY2(log.lines().size() < 10, qPrintable(log.lines().join(QLatin1Char('\n'))));
        QVERIFY(!log.contains("|warning|"_s) && !log.contains("|critical|"_s));
    }

    // Two people link two groups to each other at the same time: neither can know of the cycle.
    void aCycleMadeByTwoClients()
    {
        DevSite site;
        QVERIFY2(site.open({}), qPrintable(site.server.errorString()));
        QVERIFY(site.server.store({ R"({"_id": "a", "type": "group:product"})"_json,
                                    R"({"_id": "b", "type": "group:product"})"_json }));
        QNetworkAccessManager manager;
        QList<QJsonObject> edited;
        for (const QStringList &link : { "a b"_l, "b a"_l }) {
            Context client(site.server.serviceUrl(), site.server.database());
            client.setNetworkAccessManager(&manager);
            const QSignalSpy finished(client.loadDocuments(link), &LoadRequest::finished);
            QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
            auto *group = qobject_cast<ProductGroup *>(client.loadedDocument(link.first()));
            group->setParentGroup(qobject_cast<Group *>(client.loadedDocument(link.last())));
            edited << group->serialize();
        }
        QVERIFY(site.server.store(edited));

        LogCapture log;
        Context &context = site.context;
        context.setContentFetchPolicy(Context::BypassDocumentCachePolicy);
        const QSignalSpy finished(context.loadDocument("a"_s), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
        auto *a = qobject_cast<ProductGroup *>(context.loadedDocument("a"_s));
        auto *b = qobject_cast<ProductGroup *>(context.loadedDocument("b"_s));
        QCOMPARE(a->parentGroup(), b);
        QCOMPARE(b->parentGroup(), a);
        QVERIFY(a->isComplete() && b->isComplete());
        const QSignalSpy linked(&context, &Context::documentLinked);
        QTRY_COMPARE(linked.size(), 2);
        QVERIFY(!context.hasLocalChanges());
        QCOMPARE(log.count("|warning|"_s), 1);
        QVERIFY(log.contains("which leads back to it"_s));
    }
};

QTEST_GUILESS_MAIN(tst_DocumentRoad)
#include "tst_documentroad.moc"
