// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/documents/genericdata.h>

#include "support/logcapture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QTest>

using namespace vo::data;

/// The sample content is what the classes of its documents would store themselves: nothing of it
/// gets lost, and nothing is added, when a document is saved.
class tst_SampleContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void documentsAreStoredAsTheyWere_data();
    void documentsAreStoredAsTheyWere();
    void nothingIsLoggedOrEdited();

private:
    QJsonObject m_stored; // by id
    std::unique_ptr<vo::test::LogCapture> m_log;
    Context m_context;
};

void tst_SampleContent::initTestCase()
{
    m_log = std::make_unique<vo::test::LogCapture>();
    const QDir folder(qEnvironmentVariable("VORREL_SOURCE_DIR")
                      + QStringLiteral("/database/sample"));
    const QStringList names = folder.entryList({ QStringLiteral("*.json") });
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
        const QJsonArray documents = QJsonDocument::fromJson(file.readAll()).array();
        for (const QJsonValue &document : documents) {
            m_stored.insert(document[QLatin1String("_id")].toString(), document);
        }
    }
    QVERIFY(m_stored.size() > 60);
    for (auto it = m_stored.begin(); it != m_stored.end(); ++it) {
        m_context.addDocumentNode(it.key().toLatin1(), it->toObject());
    }
    // The catalogue refers to all others, which are built in slices.
    QVERIFY(m_context.loadedDocument(QStringLiteral("sample.catalogue")));
    QTRY_COMPARE(m_context.documents().size(), m_stored.size());
    m_context.finishIncubation();
}

void tst_SampleContent::documentsAreStoredAsTheyWere_data()
{
    QTest::addColumn<QString>("id");
    const QStringList ids = m_stored.keys();
    for (const QString &id : ids) {
        QTest::newRow(qPrintable(id)) << id;
    }
}

void tst_SampleContent::documentsAreStoredAsTheyWere()
{
    QFETCH(QString, id);
    auto *document = qobject_cast<LinkedDocument *>(m_context.loadedDocument(id));
    QVERIFY(document);
    QJsonObject stored = m_stored.value(id).toObject();
    const bool isGeneric = qobject_cast<GenericData *>(document);
    QCOMPARE(isGeneric, document->type().startsWith(QLatin1String("data:")));

    QJsonObject serialized = document->serialize();
    stored.remove(QLatin1String("creationVersion"));
    serialized.remove(QLatin1String("creationVersion"));
    QCOMPARE(QJsonDocument(serialized).toJson(), QJsonDocument(stored).toJson());

    QStringList linked;
    const QList<Document *> attached = document->attached();
    for (const Document *target : attached) {
        if (qobject_cast<const LinkedDocument *>(target)) {
            linked.append(target->documentId());
        }
    }
    linked.sort();
    QCOMPARE(QJsonArray::fromStringList(linked),
             stored.value(QLatin1String("references")).toArray());
    QVERIFY(document->isComplete());
}

void tst_SampleContent::nothingIsLoggedOrEdited()
{
    QCOMPARE(m_log->lines(), QStringList());
    m_log.reset();
    QVERIFY(!m_context.hasLocalChanges());
}

QTEST_GUILESS_MAIN(tst_SampleContent)

#include "tst_samplecontent.moc"
