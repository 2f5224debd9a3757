// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/savefailure.h>
#include <vorrel/data/transfer/uploadbody_p.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QSharedPointer>

#include <memory>

namespace vo {
class Request;
}

namespace vo::data {

class Context;
class Document;
class DocumentCache;

/// Brings one document to the database: makes its text on a thread of its own, then sends its
/// larger attachments and the text, one PUT after the other. Child of the SaveQueue.
///
/// If the database holds another revision than the one that was edited, what is here wins, unless
/// the application decides otherwise: see Context::setConflictHandler(). Log lines are in
/// "vorrel.data.savequeue", failures at critical.
class SaveTask : public QObject
{
    Q_OBJECT
public:
    enum Status {
        Failed = -1,
        Idle = 0,
        Started = 2,
        Finished = 3,
    };

    SaveTask(Document *document, QObject *parent);
    ~SaveTask() override;

    /// Takes a snapshot of the document and begins to make its text. Once.
    void prepare();

    /// Sends what was prepared, as soon as it is.
    void start();

    [[nodiscard]] Status status() const { return m_status; }

    /// From 0 to 1.
    [[nodiscard]] double progress() const { return m_progress; }

    /// What is to be sent, in bytes; 0 until that is known.
    [[nodiscard]] qint64 bytesTotal() const { return m_bytesTotal; }

    /// Why it has failed.
    [[nodiscard]] const SaveFailure &failure() const { return m_failure; }

Q_SIGNALS:
    /// Done or failed. A slot may destroy this task.
    void finished();
    void progressChanged();

private Q_SLOTS:
    void finishPrepare();
    void updateProgress(qint64 sent, qint64 total);

private:
    using Watcher = QFutureWatcher<QList<TransferItem>>;

    [[nodiscard]] QList<AttachmentInfo> takeAttachments();
    void beginTransfer();
    void sendNext();
    void handleAnswer(const Request &request);
    void itemStored(const Request &request);
    void fetchRevision();
    void handleRevision(const Request &request);
    void resolveConflict(const QString &remoteRevision);
    void sendAgain();
    void keepRemote(const QString &remoteRevision);
    void finish();
    void complete();
    void fail(int statusCode, const QString &reason);
    [[nodiscard]] bool failIfGone();

    const QPointer<Document> m_document;
    const QPointer<Context> m_context;
    const QString m_id;
    const QUrl m_url;                            // in the database that is open now
    const QSharedPointer<DocumentCache> m_cache; // of that database
    Status m_status = Idle;
    double m_progress = 0;
    qint64 m_bytesDone = 0;
    qint64 m_bytesTotal = 0;
    int m_dirtyCount = 0;           // of the document when it was prepared
    bool m_isEdited = false;        // since then
    int m_conflicts = 0;            // since an item was stored
    QString m_revision;             // that the next item is based on
    QSet<QByteArray> m_attachments; // hexadecimal; in the end all that the saved revision has
    std::shared_ptr<UploadBody> m_body;
    QList<TransferItem> m_items;  // still to be sent
    Watcher *m_watcher = nullptr; // child; while it is being prepared
    SaveFailure m_failure;
};

} // namespace vo::data
