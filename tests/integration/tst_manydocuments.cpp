// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Ten thousand documents of mixed types in three lists at once, while somebody else makes, edits
// and deletes some. In the end the lists and the counts of references are those of the database.

#include "support/devserver.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/jobs/documentdeleter.h>
#include <vorrel/data/jobs/referencecount.h>
#include <vorrel/data/jobs/referencecounter.h>
#include <vorrel/data/models/documentmodel.h>
#include <vorrel/data/module/registration.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

constexpr int patience = 120000; // ms; the machine may be busy

void open(Context &context, QNetworkAccessManager &manager, const DevServer &server)
{
    context.setNetworkAccessManager(&manager);
    context.setServiceUrl(server.serviceUrl());
    // Both have one cache in this process.
    context.setContentFetchPolicy(Context::BypassDocumentCachePolicy);
    context.setChangeFeedMonitorType(Context::LongPollingMonitor);
    context.setDatabase(server.database());
}

/// What the database says, read without the library.
struct Inventory
{
    explicit Inventory(DevServer &server)
    {
        const QJsonArray rows =
            server.get("_all_docs"_s, { { "include_docs"_s, "true"_s } }).value("rows"_s).toArray();
        for (const QJsonValue &row : rows) {
            add(row.toObject().value("doc"_s).toObject());
        }
    }

    /// Sorted, of one type and those below it.
    [[nodiscard]] QStringList idsOf(const QString &type) const
    {
        QStringList ids;
        for (auto it = types.begin(); it != types.end(); ++it) {
            if (it.value() == type || it.value().startsWith(type + ":"_s)) {
                ids << it.key();
            }
        }
        return ids;
    }

    QMap<QString, QString> types;
    QHash<QString, QSet<QString>> referrers;

private:
    void add(const QJsonObject &document)
    {
        if (!document.contains("type"_s) || document.value("deleted"_s).toBool()) {
            return;
        }
        const QString id = document.value("_id"_s).toString();
        types.insert(id, document.value("type"_s).toString());
        const QJsonArray references = document.value("references"_s).toArray();
        for (const QJsonValue &reference : references) {
            referrers[reference.toString()] << id;
        }
    }
};

/// Somebody else, at work on products.
class Worker : public QObject
{
public:
    Worker(const DevServer &server, QStringList products)
        : m_products(std::move(products))
    {
        open(m_context, m_manager, server);
        connect(&m_context, &Context::saved, this, &Worker::work, Qt::QueuedConnection);
        connect(m_context.loadDocuments(m_products), &LoadRequest::finished, this, &Worker::work,
                Qt::QueuedConnection);
    }

    [[nodiscard]] bool isDone() const { return m_products.isEmpty() && !m_context.isSaving(); }

private:
    /// Makes, edits and deletes one each, and saves.
    void work()
    {
        if (m_products.size() < 2) {
            m_products.clear();
            return;
        }
        Document *edited = m_context.loadedDocument(m_products.takeFirst());
        Document *removed = m_context.loadedDocument(m_products.takeFirst());
        Document *made =
            m_context.createDocumentWithId("product"_s, "sample.made-%1"_s.arg(m_products.size()));
        made->setProperty("productGroup", edited->property("productGroup"));
        edited->setProperty("productGroup", removed->property("productGroup"));
        edited->setProperty("name", "Edited %1"_s.arg(m_products.size()));
        removed->remove();
        m_context.saveLocalChanges();
    }

    QStringList m_products;
    QNetworkAccessManager m_manager;
    EditContext m_context;
};

QStringList sortedIds(const DocumentModel *model)
{
    QStringList ids;
    const QList<Document *> documents = model->dataList();
    std::transform(documents.begin(), documents.end(), std::back_inserter(ids),
                   [](const Document *document) { return document->documentId(); });
    ids.sort();
    return ids;
}

} // namespace

class tst_ManyDocuments : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsAndCountsAreThoseOfTheDatabase()
    {
        DevServer server;
        QVERIFY2(server.start() && server.fill(10000), qPrintable(server.errorString()));
        _vo_data_registerTypesdata_core();
        QQmlEngine engine;
        engine.addImportPath(qEnvironmentVariable("QML2_IMPORT_PATH"));
        QQmlComponent component(&engine,
                                QUrl::fromLocalFile(qEnvironmentVariable("VORREL_SOURCE_DIR")
                                                    + "/tests/integration/chain.qml"_s));
        QNetworkAccessManager manager;
        Context context;
        open(context, manager, server);
        QMap<QString, const DocumentModel *> models;
        for (const QString &kind : { "product"_s, "tag"_s, "device"_s }) {
            QObject *chain = component.createWithInitialProperties(
                { { "context"_s, QVariant::fromValue(&context) }, { "kind"_s, kind } });
            QVERIFY2(chain, qPrintable(component.errorString()));
            chain->setParent(&engine);
            models.insert(kind, chain->property("model").value<DocumentModel *>());
        }
        const Worker worker(server, Inventory(server).idsOf("product"_s).mid(0, 12));
        QTRY_VERIFY_WITH_TIMEOUT(worker.isDone(), patience);

        const Inventory inventory(server);
        QVERIFY(inventory.types.contains("sample.made-0"_s));
        for (auto it = models.begin(); it != models.end(); ++it) {
            const QStringList ids = inventory.idsOf(it.key());
            QVERIFY(ids.size() > 100);
            QTRY_COMPARE_WITH_TIMEOUT(sortedIds(it.value()), ids, patience);
        }
        countReferences(context, inventory);
    }

private:
    static void countReferences(Context &context, const Inventory &inventory)
    {
        const QStringList groups = inventory.idsOf("group:product"_s);
        QTRY_VERIFY_WITH_TIMEOUT(context.loadedDocument(groups.last()), patience);
        ReferenceCounter counter;
        QQmlListProperty<Document> documents = counter.documents();
        for (const QString &id : groups) {
            if (Document *group = context.loadedDocument(id)) {
                documents.append(&documents, group);
            }
        }
        QTRY_COMPARE_WITH_TIMEOUT(counter.status(), ReferenceCounter::Ready, patience);
        ReferenceCount count;
        DocumentDeleter deleter;
        for (const QString &id : groups) {
            Document *group = context.loadedDocument(id);
            const int expected = int(inventory.referrers.value(id).size());
            if (group) {
                QCOMPARE(counter.referenceCount(group), expected);
                QCOMPARE(counter.isReferenced(group), expected > 0);
                count.setDocument(group);
                deleter.setDocument(group);
                QTRY_COMPARE_WITH_TIMEOUT(deleter.status(), DocumentDeleter::Loaded, patience);
                QTRY_COMPARE_WITH_TIMEOUT(count.count(), expected, patience);
                QCOMPARE(deleter.dependantCount(), expected);
            }
        }
        QVERIFY(count.document());
    }
};

QTEST_MAIN(tst_ManyDocuments)
#include "tst_manydocuments.moc"
