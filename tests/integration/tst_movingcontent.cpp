// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/archives.h"
#include "support/editsite.h"
#include "support/logcapture.h"

#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

constexpr int patience = EditSite::patience;
constexpr int imageCount = 300;
constexpr int stationCount = 1700;

} // namespace

class tst_MovingContent : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aGraphMovesToAnotherServer()
    {
        const LogCapture log;
        registerDocument<Station>();
        EditSite source;
        EditSite target;
        QVERIFY2(source.isOpen && target.isOpen, qPrintable(source.server.errorString()));
        const QList<QJsonObject> documents = makeGraph(stationCount, imageCount);
        const QString id = documents.constFirst().value("_id"_s).toString();
        QVERIFY(source.server.store(documents));
        for (const QByteArray &hash : AttachmentStore::unreferencedAttachments({})) {
            AttachmentStore::removeAttachment(hash);
        }
        LinkedDocument *root = source.load(id);
        QVERIFY(root);
        QCOMPARE(root->exportGaps().size(), imageCount);
        root->completeCache();
        QTRY_VERIFY_WITH_TIMEOUT(!source.context->isBusy(), patience);
        const QTemporaryDir directory;
        const QUrl file = QUrl::fromLocalFile(directory.filePath("all.vorrel"_s));
        QVERIFY(root->exportGaps().isEmpty() && root->exportDocument(file));

        // The server goes away while the import asks it for the documents.
        if (target.server.isOwnProcess()) {
            target.server.kill();
        }
        Import import(target.context.get());
        import.importDocument(file);
        QTest::qWait(300);
        QVERIFY(import.isImporting() && target.context->documents().size() < imageCount);
        QVERIFY(!target.server.isOwnProcess() || target.server.start());
        QTRY_VERIFY_WITH_TIMEOUT(import.hasEnded(), patience);
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());
        QList<QJsonObject> imported; // one upload after the other would take minutes
        for (const LinkedDocument *document : target.context->dirtyDocuments()) {
            imported << storedForm(document);
        }
        QVERIFY(imported.size() == documents.size() && target.server.store(imported));
        const QString copy = import.result->documentId();
        QVERIFY(copy != id);
        target.reopen();
        QVERIFY(target.load(copy) && target.load(copy)->exportGaps().isEmpty());
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());

        // Once more: the images are there already.
        const auto before = target.documents();
        Import again(target.context.get());
        again.importDocument(file);
        QTRY_VERIFY_WITH_TIMEOUT(again.hasEnded() && target.context->canUndo(), patience);
        QCOMPARE(target.context->dirtyDocuments().size(), stationCount);
        QCOMPARE(target.context->documents().size(), before.size() + stationCount);
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());
        target.context->undo();
        QVERIFY(target.documents() == before && !target.context->hasLocalChanges());
    }
};

QTEST_GUILESS_MAIN(tst_MovingContent)
#include "tst_movingcontent.moc"
