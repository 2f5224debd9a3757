// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/core/downloadprogress.h>
#include <vorrel/data/context/loadrequestboard_p.h>
#include <vorrel/data/context/savefailure.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/documenttask.h>
#include <vorrel/data/core/iupdatehandler.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QVector>
#include <QtNetwork/QNetworkAccessManager>

#include <chrono>
#include <deque>
#include <optional>

namespace vo::data {

class AttachmentFetchJob;
class ChangeFeedMonitor;
class DocumentIncubator;
class ReloadingUpdateHandler;
class SaveQueue;

struct Context::Private final : DocumentStore
{
    struct DependencyUpdate
    {
        std::chrono::steady_clock::time_point due;
        QPointer<LinkedDocument> document;
    };

    /// While one lives, edits are those of others and are not recorded.
    class RemoteEdit
    {
    public:
        explicit RemoteEdit(Context *context);
        ~RemoteEdit();
        Q_DISABLE_COPY_MOVE(RemoteEdit)

    private:
        const QPointer<Context> m_context;
    };

    explicit Private(Context *context);
    ~Private() override;

    // Configuration
    Context *const q;
    QUrl url;
    QString databaseName;
    bool building = false;               // QML sets properties just now
    std::optional<QString> heldDatabase; // what it set while building
    int databaseChanges = 0;             // tells a slot of databaseChanged that set another one
    ChangeFeedMonitorType changeFeedMonitorType = ContinuousMonitor;
    ContentFetchPolicy contentFetchPolicy = DefaultPolicy;
    QPointer<QNetworkAccessManager> networkAccessManager;
    QSharedPointer<DocumentCache> cache;
    std::shared_ptr<IUpdateHandler> updateHandler; // shared with the calls of it that run

    // The database as others change it
    ChangeFeedMonitor *monitor = nullptr; // child of the Context; null without a database

    // Loading
    DocumentIncubator *const incubator;   // child of the Context
    LoadRequestBoard *const loadRequests; // child of the Context
    LoadQueue *loadQueue = nullptr;       // child of the Context; null only while that is destroyed
    bool busy = false;

    // Documents
    QObject *documents; // their parent: a child of the Context, so that they can all go at once
    QHash<QByteArray, DocumentNode *> documentNodes;                                // owned
    QHash<std::pair<DocumentNode *, DocumentNode *>, DocumentEdge *> documentLinks; // owned
    QSet<LinkedDocument *> dirtyDocuments;
    QList<Document *> locals;
    QHash<QString, QVector<std::function<void(Document *)>>> creationHandlers;

    // Edits and saving
    bool saveEnabled = true;
    SaveQueue *saveQueue = nullptr; // child of the Context, while an upload runs
    QList<SaveFailure> saveFailures;
    ConflictHandler conflictHandler;
    std::unique_ptr<ReloadingUpdateHandler> conflictReloads; // made when edits are dropped first
    int remoteEdits = 0; // edits of others that are being taken, one inside the other

    // Errors
    QList<ContextError *> errors; // children of the Context, in the order of errors()
    QDateTime errorsSince;        // when the first of them came
    qint64 nextErrorReport = 0;   // seconds since the epoch
    int errorReportCount = 0;     // since the list changed last
    int retryTimerId = 0;         // 0 without errors
    qint64 lastRetryTick = 0;     // milliseconds since the epoch
    std::chrono::milliseconds tryFixRemainingTime = tuning::errorRetryPeriod;

    // Jobs and downloads
    QList<Job *> jobs; // owned
    QHash<const Attachment *, QPointer<AttachmentFetchJob>> attachmentFetches;
    QList<QSharedPointer<DownloadProgress>> downloads;
    DownloadStatus *downloadStatus = nullptr; // child of the Context
    int downloadTimerId = 0;

    QSet<Listing *> listings;

    // Deferred work
    std::deque<std::unique_ptr<DocumentTask>> graphTasks;
    bool graphTasksPending = false;
    std::deque<DependencyUpdate> dependencyUpdates; // by time
    bool closing = false;

    DocumentNode *insertNode(DocumentNode *node);

    /// Opens the cache and the change feed of the present database, in the place of the former
    /// ones.
    void followDatabase();

    void destroyEdge(DocumentEdge *edge);

    /// Takes \p node out of the table and the graph. The caller owns it then.
    std::shared_ptr<DocumentNode> takeNode(DocumentNode *node);

    /// The end of a node that was taken: announces that its document goes, and destroys both.
    void destroyNode(const std::shared_ptr<DocumentNode> &node);
    void removeDocument(LinkedDocument *document);
    void runCreationHandlers(Document *document);
    void startDependencyTimer();
    void runDependencyUpdates();

    void endSave(bool success, const QList<SaveFailure> &failures);
    void setSaveFailures(const QList<SaveFailure> &failures);

    void insertError(ContextError *error);

    /// True if it was the first.
    bool removeError(ContextError *error);

    void announceErrors(bool primaryChanged);
    void retryErrors();
    void setTryFixRemainingTime(std::chrono::milliseconds time);
    void delayErrorReport(std::chrono::seconds delay);
    void reportErrors();

    void destroyJobs();
    void reportDownloads();

    // DocumentStore
    QObject *object() override;
    QObject *documentParent() override;
    [[nodiscard]] bool isClosing() const override;
    [[nodiscard]] QString language() const override;
    [[nodiscard]] QUrl serviceUrl() const override;
    [[nodiscard]] QString database() const override;
    [[nodiscard]] QNetworkAccessManager *networkManager() const override;
    [[nodiscard]] DocumentNode *documentNode(const QByteArray &id) const override;
    [[nodiscard]] bool releaseId(const QByteArray &id) override;
    void addDocument(LinkedDocument *document) override;
    void forgetDocument(LinkedDocument *document) override;
    void markDirty(LinkedDocument *document) override;
    void markClean(LinkedDocument *document) override;
    void reportLocalStateChange(Document *document) override;
    void reportDocumentChange(Document *document) override;
    void linkDocuments(DocumentNode *from, DocumentNode *to) override;
    void unlinkDocuments(DocumentNode *from, DocumentNode *to) override;
    void delayDependencyUpdate(LinkedDocument *document) override;
    void addDocumentGraphTask(std::unique_ptr<DocumentTask> task) override;
    void incubate(IIncubatable *object) override;
    void finishIncubation() override;
    [[nodiscard]] bool attachmentDownloadEnabled() const override;
    [[nodiscard]] QSharedPointer<DownloadProgress> beginDownload() override;
    void endDownload(const QSharedPointer<DownloadProgress> &progress) override;
    void fetchAttachment(LinkedDocument *document, const QString &property,
                         const std::function<void()> &finished) override;
    [[nodiscard]] bool exportDocument(const Document *document, const QUrl &file,
                                      const QStringList &dependencies,
                                      const QStringList &excludedKeys) override;
    [[nodiscard]] QList<ExportGap> exportGaps(const Document *document,
                                              const QStringList &dependencies) override;
    [[nodiscard]] std::unique_ptr<AccessController> createAccessController(
        LinkedDocument *document) override;
};

} // namespace vo::data
