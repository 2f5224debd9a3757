// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariantList>
#include <QtQml/QQmlListProperty>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqml.h>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QNetworkAccessManager;
QT_END_NAMESPACE

namespace vo::data {

class AccessController;
class ContextError;
class Document;
class DocumentCache;
class DocumentNode;
class DocumentStore;
class DocumentTask;
class DownloadStatus;
class IIncubatable;
class IUpdateHandler;
class Job;
class LinkedDocument;
class Listing;
class LoadQueue;
class LoadRequest;
class SaveFailure;
class SaveQueue;
struct DownloadProgress;

/// One database on one server, and all of its documents that were loaded or made here. Everything
/// else in the library reaches the database through it.
///
/// In QML: Context { serviceUrl: "http://localhost:5984"; database: "shop" }. In C++ set the
/// service URL and the network manager first, then the database, which opens the cache.
///
/// It owns its documents: each is one object for each id, lives as long as the Context unless it is
/// removed, and is never owned by JavaScript. All use is on the thread of the Context. The
/// destructor emits nothing and saves nothing.
class VORREL_DATACORE_EXPORT Context : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_NAMED_ELEMENT(Context)
    Q_MOC_INCLUDE("vorrel/data/context/contexterror.h")
    Q_MOC_INCLUDE("vorrel/data/context/downloadstatus.h")
    Q_MOC_INCLUDE("vorrel/data/core/linkeddocument.h")
    Q_MOC_INCLUDE("vorrel/data/transfer/savequeue.h")
    Q_PROPERTY(QUrl serviceUrl READ serviceUrl WRITE setServiceUrlFromQml NOTIFY serviceUrlChanged)
    Q_PROPERTY(QString database READ database WRITE setDatabase NOTIFY databaseChanged)
    Q_PROPERTY(
        vo::data::Context::ChangeFeedMonitorType changeFeedMonitorType READ changeFeedMonitorType
            WRITE setChangeFeedMonitorTypeFromQml NOTIFY changeFeedMonitorTypeChanged)
    Q_PROPERTY(vo::data::Context::ContentFetchPolicy contentFetchPolicy READ contentFetchPolicy
                   WRITE setContentFetchPolicy NOTIFY contentFetchPolicyChanged)
    Q_PROPERTY(bool followsRemoteEdits READ followsRemoteEdits WRITE setFollowsRemoteEdits NOTIFY
                   followsRemoteEditsChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    Q_PROPERTY(vo::data::ContextError *primaryError READ primaryError NOTIFY primaryErrorChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::ContextError> errors READ errorList NOTIFY errorsChanged)
    Q_PROPERTY(int tryFixRemainingTime READ tryFixRemainingTime NOTIFY tryFixRemainingTimeChanged)
    Q_PROPERTY(vo::data::DownloadStatus *download READ download NOTIFY downloadChanged)
    Q_PROPERTY(bool hasLocalChanges READ hasLocalChanges NOTIFY hasLocalChangesChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY canSaveChanged)
    Q_PROPERTY(vo::data::SaveQueue *saveQueue READ saveQueue NOTIFY saveQueueChanged)
    Q_PROPERTY(QVariantList saveFailures READ saveFailureList NOTIFY saveFailuresChanged)
    Q_PROPERTY(QString language READ language CONSTANT)
    Q_PROPERTY(QString country READ country CONSTANT)

public:
    enum ChangeFeedMonitorType {
        NullMonitor = 0,
        ContinuousMonitor = 1,
        PollingMonitor = 2,
        LongPollingMonitor = 3,
    };
    Q_ENUM(ChangeFeedMonitorType)

    enum ContentFetchPolicyFlag {
        NoPolicy = 0,
        AutomaticAttachmentDownloadPolicy = 1,
        DeletedDocumentLoadPolicy = 2,
        LocalDocumentLoadPolicy = 4,
        BypassDocumentCachePolicy = 8, ///< read from the database only; the cache is still filled
        DefaultPolicy = LocalDocumentLoadPolicy,
    };
    Q_DECLARE_FLAGS(ContentFetchPolicy, ContentFetchPolicyFlag)
    Q_FLAG(ContentFetchPolicy)

    /// What becomes of a document that was edited here and by somebody else, too.
    enum ConflictResolution {
        KeepLocal,  ///< it is saved over the other edit
        KeepRemote, ///< the edits made here are dropped, and the document is loaded anew
        StopSaving, ///< the upload fails; the edits stay unsaved
    };
    Q_ENUM(ConflictResolution)

    /// Decides about \a document, in whose place the database holds \a remoteRevision.
    using ConflictHandler =
        std::function<ConflictResolution(Document *document, const QString &remoteRevision)>;

    /// Named so by attachments, too.
    using DownloadData = DownloadProgress;

    explicit Context(QObject *parent = nullptr);
    Context(const QUrl &serviceUrl, const QString &database, QObject *parent = nullptr);
    ~Context() override;

    /// Makes what decides on access to \p document; an application's own policy comes in here.
    /// The document owns it.
    virtual AccessController *createAccessController(LinkedDocument *document);

    /// Takes over \p queue in the place of the present one. What the old one still wanted is
    /// wanted from the new one. \pre \p queue is not null and was made for this Context
    virtual void setLoadQueue(LoadQueue *queue);

    /// Whether createDocument() may make documents of \p type. True here.
    [[nodiscard]] virtual bool canCreateNewDocument(const QString &type) const;

    /// Takes the network manager of the QML engine. Until componentComplete(), a database that QML
    /// sets is held back, so that the order of properties does not matter.
    void classBegin() override;
    void componentComplete() override;

    /// \name Configuration
    /// @{

    /// The base URL of the server. User and password in it are sent with each request and never
    /// logged.
    [[nodiscard]] QUrl serviceUrl() const;

    /// Stores \p url and emits nothing; for the time before setDatabase().
    void setServiceUrl(const QUrl &url);

    [[nodiscard]] QString database() const;

    /// Opens a database: its cache is shared with every Context of the same database name, on
    /// whatever server. The present name changes nothing. Documents of the former database stay;
    /// a warning is logged when some of them have unsaved edits.
    void setDatabase(const QString &name);

    [[nodiscard]] ChangeFeedMonitorType changeFeedMonitorType() const;

    /// How edits of others are learned of. Takes effect when the database changes next.
    void setChangeFeedMonitorType(ChangeFeedMonitorType type);

    [[nodiscard]] ContentFetchPolicy contentFetchPolicy() const;
    void setContentFetchPolicy(ContentFetchPolicy policy);
    [[nodiscard]] bool attachmentDownloadEnabled() const;
    void setAttachmentDownloadEnabled(bool enabled);

    /// Not owned. Null makes every request fail.
    [[nodiscard]] QNetworkAccessManager *networkAccessManager() const;
    void setNetworkAccessManager(QNetworkAccessManager *manager);

    /// Always "de" and "AT".
    [[nodiscard]] QString language() const;
    [[nodiscard]] QString country() const;

    /// Takes \p handler over; the present one is deleted, once it is not running.
    void setUpdateHandler(IUpdateHandler *handler);

    /// Whether documents are loaded anew when somebody else edits them, by a
    /// ReloadingUpdateHandler. False at first. Setting it replaces the update handler.
    [[nodiscard]] bool followsRemoteEdits() const;
    void setFollowsRemoteEdits(bool follow);
    /// @}

    /// \name Loading
    /// @{

    /// Loads documents with all that they refer to. The request ends, and deletes itself, when
    /// each id has its node or is known not to exist. Ids beyond Latin-1 do not exist. Null only
    /// if the Context is being destroyed.
    LoadRequest *loadDocument(const QString &id);
    LoadRequest *loadDocuments(const QStringList &ids);

    /// Whether the id is known, built or not, deleted or not.
    Q_INVOKABLE [[nodiscard]] bool isLoaded(const QString &id) const;

    /// The document, built on first use. Null if it is not loaded, is of an unknown type or is
    /// deleted.
    Q_INVOKABLE [[nodiscard]] vo::data::Document *loadedDocument(const QString &id) const;

    /// True while documents are being loaded or a Job lives.
    [[nodiscard]] bool isBusy() const;
    [[nodiscard]] LoadQueue *loadQueue() const;

    /// Null as long as no database is open.
    [[nodiscard]] QSharedPointer<DocumentCache> documentCache() const;

    /// Writes the cache to its file, in the background, if it has changed. Nothing else does: call
    /// it now and then, and before the program ends.
    Q_INVOKABLE void persistCache();
    /// @}

    /// \name Errors
    /// @{

    /// Takes \p error over until it is fixed. While there are errors, tryFixErrors() is called
    /// every 15 s. They are reported in the log, at critical: 20 s after the last one came, 5 s
    /// after one was fixed, and from then on after 5, 10, 15 minutes and so on, up to an hour.
    void addError(ContextError *error);

    /// The worst come first; of those that are as bad, the oldest.
    [[nodiscard]] QList<ContextError *> errors() const;

    /// The first of the errors, or null.
    [[nodiscard]] ContextError *primaryError() const;

    /// Asks every error whether its cause is gone. The countdown goes on as it was.
    Q_INVOKABLE void tryFixErrors();

    /// Milliseconds until tryFixErrors() is called next. Stands still without errors.
    [[nodiscard]] int tryFixRemainingTime() const;
    /// @}

    /// \name Downloads
    /// @{

    /// A new download among those that downloadStatus() sums up. The caller keeps the record up to
    /// date, and gives it to endDownload() whatever becomes of the download.
    [[nodiscard]] QSharedPointer<DownloadProgress> beginDownload();

    /// \pre \p progress came from beginDownload()
    void endDownload(const QSharedPointer<DownloadProgress> &progress);

    /// What all downloads come to; null while there are none. Owned by the Context.
    [[nodiscard]] DownloadStatus *downloadStatus() const;
    [[nodiscard]] DownloadStatus *download() const;
    /// @}

    /// \name Documents
    /// @{

    /// A new document. Null for an unknown type, for a type that canCreateNewDocument() refuses
    /// and, with a log line, for an id of a live document or beyond Latin-1.
    Q_INVOKABLE vo::data::Document *createDocument(const QString &type);
    Q_INVOKABLE vo::data::Document *createDocumentWithId(const QString &type, const QString &id);

    /// All documents that have been built.
    [[nodiscard]] QList<Document *> documents() const;
    [[nodiscard]] QList<LinkedDocument *> dirtyDocuments() const;

    /// Documents that the database has never seen.
    [[nodiscard]] QList<Document *> localDocuments() const;
    [[nodiscard]] bool hasLocalChanges() const;

    /// Calls \p handler with each document of \p type or a type below it when it is made. Handlers
    /// of shorter types run first.
    void addCreationHandler(const QString &type, std::function<void(Document *)> handler);

    /// The database has lost this document: it is deleted here too, without any upload, and goes
    /// in a later turn of the event loop. Unsaved edits are lost, with a warning.
    void removeDocument(const QString &id);
    void removeDocument(LinkedDocument *document);

    /// Logs for support, in "vorrel.data.context": how many documents of each type there are, how
    /// many inline documents no property holds, and how large the tables and queues are.
    void documentReport() const;
    /// @}

    /// \name Saving
    /// @{

    /// Whether saveLocalChanges() would do anything.
    [[nodiscard]] bool canSave() const;

    /// Whether edits may be uploaded now. True at first; an EditContext switches it off while
    /// changes are being grouped.
    [[nodiscard]] bool isSaveEnabled() const;
    void setSaveEnabled(bool enabled);

    /// The upload that runs, or null. Owned by the Context. The change feed waits until it has
    /// ended.
    [[nodiscard]] SaveQueue *saveQueue() const;
    [[nodiscard]] bool isSaving() const;

    /// What the last upload could not save, and why; empty while one runs and after a success.
    [[nodiscard]] QList<SaveFailure> saveFailures() const;

    /// Asks \p handler when somebody else has edited a document that is being saved. Without one,
    /// and after setting null, what is here wins. Either way there is a warning in
    /// "vorrel.data.savequeue" that names the document and the revisions.
    void setConflictHandler(ConflictHandler handler);
    /// @}

    /// \name For the library itself
    /// @{
    [[nodiscard]] DocumentNode *documentNode(const QByteArray &id) const;
    [[nodiscard]] DocumentNode *documentNode(const Document *document) const;

    /// The node of \p id, made with \p data if there is none.
    DocumentNode *addDocumentNode(const QByteArray &id, const QJsonObject &data);
    void addDocument(LinkedDocument *document);
    void linkDocuments(DocumentNode *from, DocumentNode *to);
    void unlinkDocuments(DocumentNode *from, DocumentNode *to);
    void markDirty(LinkedDocument *document);
    void markClean(LinkedDocument *document);
    void reportDocumentChange(Document *document);
    void reportLocalStateChange(Document *document);
    void incubate(IIncubatable *object);
    void finishIncubation();

    /// A listing that is to be brought up to date when the database has something new.
    void addListing(Listing *listing);
    void removeListing(Listing *listing);
    void updateListings();

    /// Runs \p task in a later turn, together with others, 6 ms of them at a time.
    void addDocumentGraphTask(std::unique_ptr<DocumentTask> task);
    /// @}

public Q_SLOTS:
    /// Uploads all unsaved edits. saved() tells how that went. Does nothing unless canSave().
    void saveLocalChanges();

    /// Asks anew for the access level of every document.
    void updateAccessLevel();

Q_SIGNALS:
    void serviceUrlChanged(const QUrl &serviceUrl);
    void databaseChanged(const QString &database);
    void changeFeedMonitorTypeChanged();
    void contentFetchPolicyChanged();
    void followsRemoteEditsChanged();
    void busyChanged();
    void languageChanged();
    void countryChanged();
    void hasLocalChangesChanged();
    void localDocumentsChanged();
    void errorsChanged();
    void primaryErrorChanged();
    void tryFixTriggered();
    void tryFixRemainingTimeChanged(int time);

    void canSaveChanged();
    void saveQueueChanged();
    void saveFailuresChanged();

    /// An upload has ended. False if not everything was saved: see saveFailures().
    void saved(bool success);
    void downloadChanged();
    void documentAdded(vo::data::Document *document);
    void documentRemoved(vo::data::Document *document);
    void documentChanged(vo::data::Document *document);
    void documentNodeAdded(const QString &id);
    void documentLinked(const QByteArray &from, const QByteArray &to);
    void documentUnlinked(const QByteArray &from, const QByteArray &to);

protected:
    /// Whether what changes now was changed in the database: no edit of this program.
    [[nodiscard]] bool isTakingRemoteEdit() const;

    void customEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void updateBusyState();
    void handleNewDocument(const QString &id);
    void handleNewRevision(const QString &id, const QString &revision);
    void errorFixed();
    void handleChangeFeedError();
    void saveFinished();
    void saveLost();

private:
    friend class DocumentImportJob;
    friend class Job;
    friend class SaveTask;
    friend DocumentStore &documentStore(const Context *context);

    void setServiceUrlFromQml(const QUrl &url);
    void setChangeFeedMonitorTypeFromQml(ChangeFeedMonitorType type);
    void openDatabase(const QString &name);
    [[nodiscard]] QQmlListProperty<ContextError> errorList();
    [[nodiscard]] QVariantList saveFailureList() const;
    [[nodiscard]] ConflictResolution resolveConflict(Document *document,
                                                     const QString &remoteRevision);

    /// Lets the edits go and loads what the database has.
    void dropEdits(Document *document);
    void addJob(Job *job);
    void removeJob(Job *job);

    struct Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Context::ContentFetchPolicy)

} // namespace vo::data
