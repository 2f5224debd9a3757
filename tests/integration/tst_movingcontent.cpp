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
        const QList<QJsonObject> documents = makeGraph(1700, 300);
        const QString id = documents.constFirst().value("_id"_s).toString();
        QVERIFY(source.server.store(documents));
        for (const QByteArray &hash : AttachmentStore::unreferencedAttachments({})) {
            AttachmentStore::removeAttachment(hash);
        }
        LinkedDocument *root = source.load(id);
        QVERIFY(root && root->exportGaps().size() == 300);
        root->completeCache();
        QTRY_VERIFY_WITH_TIMEOUT(!source.context->isBusy(), EditSite::patience);
        const QTemporaryDir directory;
        const QUrl file = QUrl::fromLocalFile(directory.filePath("all.vorrel"_s));
        QVERIFY(root->exportGaps().isEmpty() && root->exportDocument(file));

        // The server goes away while the import asks it for the documents.
        const bool goesAway = target.server.isOwnProcess();
        goesAway ? target.server.kill() : void();
        Import import(target.context.get());
        import.importDocument(file);
        QTRY_VERIFY(!goesAway || log.contains("Document load request failed"_s));
        QVERIFY(import.isImporting() && target.documents().isEmpty());
        QVERIFY(!goesAway || target.server.start());
        QTRY_VERIFY_WITH_TIMEOUT(import.hasEnded(), EditSite::patience);
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());
        QList<QJsonObject> imported; // one upload after the other would take minutes
        for (const LinkedDocument *document : target.context->dirtyDocuments()) {
            imported << storedForm(document);
        }
        QVERIFY(imported.size() == documents.size() && target.server.store(imported));
        const QString copy = import.result->documentId();
        target.reopen();
        QVERIFY(target.load(copy) && target.load(copy)->exportGaps().isEmpty());
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());

        // Once more: the images are there already.
        const auto before = target.documents();
        Import again(target.context.get());
        again.importDocument(file);
        QTRY_VERIFY_WITH_TIMEOUT(again.hasEnded() && target.context->canUndo(), EditSite::patience);
        QCOMPARE(target.context->dirtyDocuments().size(), 1700);
        QCOMPARE(ownDocuments(target.context->documents()).size(), before.size() + 1700);
        QCOMPARE(differences(source.documents(), target.documents()), QStringList());
        target.context->undo();
        QVERIFY(target.documents() == before && !target.context->hasLocalChanges());
    }
};

QTEST_GUILESS_MAIN(tst_MovingContent)
#include "tst_movingcontent.moc"
