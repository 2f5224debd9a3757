// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/transfer/savetask_p.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/attachmentproperty.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/core/headrequest.h>
#include <vorrel/core/putrequest.h>

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFile>
#include <QtCore/QThreadPool>

#include <algorithm>

namespace vo::data {

namespace {

constexpr int httpOk = 200;
constexpr int httpCreated = 201;
constexpr int httpAccepted = 202;
constexpr int httpConflict = 409;
constexpr int httpPreconditionFailed = 412;

/// Each of its threads holds the text of one document, with all that goes inside it.
QThreadPool *preparationPool()
{
    struct Pool : QThreadPool
    {
        Pool() { setMaxThreadCount(tuning::parallelPreparations); }
    };
    static Pool pool;
    return &pool;
}

/// Types come from documents and go into a header.
QByteArray usableContentType(const QByteArray &type)
{
    const auto isUnusable = [](char c) { return c < ' ' || c > '~'; };
    return type.isEmpty() || std::any_of(type.begin(), type.end(), isUnusable)
        ? QByteArrayLiteral("application/octet-stream")
        : type;
}

bool isUsableRevision(const QString &revision)
{
    const auto isUnusable = [](QChar c) { return c == QLatin1Char('"') || c < QLatin1Char(' '); };
    return !revision.isEmpty() && std::none_of(revision.begin(), revision.end(), isUnusable);
}

/// Without quotes, and without the mark of a weak one. Empty if it is no revision.
QString revisionOfETag(QByteArray tag)
{
    if (tag.startsWith("W/")) {
        tag = tag.mid(2);
    }
    const QString revision = QString::fromLatin1(tag.mid(1, tag.size() - 2));
    return tag.size() > 2 && isUsableRevision(revision) ? revision : QString();
}

/// A server that refuses early and closes the connection leaves no status behind.
bool isConflict(const Request &request)
{
    return request.responseCode() == httpConflict
        || (request.responseCode() == 0
            && (request.error() == QNetworkReply::UnknownNetworkError
                || request.error() == QNetworkReply::RemoteHostClosedError));
}

QString reasonOf(const Request &request)
{
    const QString reason = request.responseObject(nullptr).value(jsonkeys::reason).toString();
    return reason.isEmpty() ? request.errorString() : reason;
}

QNetworkRequest uploadRequest(const TransferItem &item, const QString &revision)
{
    QNetworkRequest request(item.url);
    request.setRawHeader("Content-Type", item.contentType);
    if (!revision.isEmpty()) { // the server refuses an empty one
        request.setRawHeader("If-Match", revision.toLatin1());
    }
    return request;
}

std::chrono::milliseconds waitAfter(int conflicts)
{
    const int doublings = std::min(conflicts - tuning::promptConflictRetries - 1, 10);
    return std::min(tuning::conflictRetryBase * (1 << doublings), tuning::conflictRetryLimit);
}

} // namespace

SaveTask::SaveTask(Document *document, QObject *parent)
    : QObject(parent)
    , m_document(document)
    , m_context(document->context())
    , m_id(document->documentId())
    , m_url(document->documentUrl())
    , m_cache(m_context->documentCache())
    , m_revision(document->revision())
    , m_attachments(document->currentAttachments())
    , m_body(std::make_shared<UploadBody>())
{ }

SaveTask::~SaveTask() = default;

// Preparation

void SaveTask::prepare()
{
    if (!m_document) {
        return; // sending will find out
    }
    m_dirtyCount = m_document->changeSequenceNumber();
    if (m_document->deleted() && m_document->isLocal()) {
        return; // the database has never heard of it
    }
    if (m_watcher) {
        qCWarning(lcSaveQueue, "Already preparing transfer data of %s", qPrintable(m_id));
        return;
    }
    qCDebug(lcSaveQueue, "Preparing transfer data of %s", qPrintable(m_id));
    // The count begins anew when a document that was never stored is deleted; if that is taken
    // back, it comes to the same number.
    connect(m_document, &Document::editedChanged, this, [this] { m_isEdited = true; });
    QJsonObject document = m_document->serialize();
    document.remove(jsonkeys::revision);
    document.remove(jsonkeys::attachments);
    m_attachments = m_document->currentAttachments();
    const QList<AttachmentInfo> attachments = takeAttachments();
    qCDebug(lcSaveQueue, "Document contains %d attachments", int(attachments.size()));
    m_watcher = new Watcher(this);
    connect(m_watcher, &Watcher::finished, this, &SaveTask::finishPrepare);
    // Of a task that has gone meanwhile nothing is made.
    m_watcher->setFuture(QtConcurrent::run(
        preparationPool(),
        [url = m_url, document, attachments, weakBody = std::weak_ptr<UploadBody>(m_body)] {
            const auto body = weakBody.lock();
            return body ? buildTransferItems(url, document, attachments, *body)
                        : QList<TransferItem>();
        }));
}

QList<AttachmentInfo> SaveTask::takeAttachments()
{
    QList<AttachmentInfo> infos;
    QSet<QByteArray> hashes;
    const QList<AttachmentProperty *> properties = m_document->attachmentProperties();
    for (const AttachmentProperty *property : properties) {
        const QByteArray hash = property->hash();
        if (hash.isEmpty()) {
            continue;
        }
        const AttachmentInfo info { m_attachments.contains(hash),
                                    property->size(),
                                    hash,
                                    usableContentType(property->mimeType()),
                                    property->get().toLocalFile(),
                                    m_document->attachmentUrl(hash) };
        if (!info.present && info.localFile.isEmpty()) {
            qCCritical(lcSaveQueue, "Document %s: there is no file %s for its property %s",
                       qPrintable(m_id), hash.constData(), property->name().constData());
        }
        infos.append(info);
        hashes.insert(hash);
    }
    m_attachments = hashes;
    return infos;
}

void SaveTask::finishPrepare()
{
    m_items = m_watcher->result();
    m_watcher->deleteLater();
    m_watcher = nullptr;
    if (m_items.isEmpty()) {
        m_failure =
            SaveFailure(m_id, m_document, 0, QStringLiteral("The upload could not be written"));
        const bool wasStarted = std::exchange(m_status, Failed) == Started;
        if (wasStarted) {
            Q_EMIT finished();
        }
        return;
    }
    qCDebug(lcSaveQueue, "Scheduling %d item(s) for transfer", int(m_items.size()));
    for (const TransferItem &item : std::as_const(m_items)) {
        qCDebug(lcSaveQueue) << item.size << item.contentType << item.fileName
                             << CouchUrl::displayText(item.url);
        m_bytesTotal += item.size;
    }
    if (m_status == Started) {
        beginTransfer();
    }
}

// Transfer

void SaveTask::start()
{
    if (m_status == Failed) {
        Q_EMIT finished();
    } else if (m_status != Idle) {
        qCWarning(lcSaveQueue, "Cannot start a save task twice: %s", qPrintable(m_id));
    } else {
        m_status = Started;
        if (!m_watcher) {
            beginTransfer();
        }
    }
}

void SaveTask::beginTransfer()
{
    qCInfo(lcSaveQueue, "Starting transfer of document %s", qPrintable(m_id));
    sendNext();
}

void SaveTask::sendNext()
{
    if (failIfGone()) {
        return;
    }
    if (m_items.isEmpty()) {
        finish();
        return;
    }
    const TransferItem &item = m_items.constFirst();
    auto *file = new QFile(item.fileName);
    auto *request = new PutRequest(uploadRequest(item, m_revision),
                                   m_context->networkAccessManager(), file, this);
    file->setParent(request);
    if (!file->open(QIODevice::ReadOnly)) {
        qCCritical(lcSaveQueue) << "Failed to open data file for transfer" << item.fileName
                                << file->error() << file->errorString();
        const QString reason = file->errorString();
        delete request;
        fail(0, reason);
        return;
    }
    request->setSuppressErrors(true);
    connect(request, &Request::uploadProgress, this, &SaveTask::updateProgress);
    connect(request, &Request::finished, this, [this, request] { handleAnswer(*request); });
}

void SaveTask::updateProgress(qint64 sent, qint64 /*total*/)
{
    m_progress = std::clamp(double(m_bytesDone + sent) / double(m_bytesTotal), 0.0, 1.0);
    Q_EMIT progressChanged();
}

void SaveTask::handleAnswer(const Request &request)
{
    if (failIfGone()) {
        return;
    }
    const int status = request.responseCode();
    if (status == httpCreated || status == httpAccepted) {
        itemStored(request);
    } else if (isConflict(request)) {
        fetchRevision();
    } else {
        qCCritical(lcSaveQueue) << "Storage of document data failed with status" << status
                                << CouchUrl::displayText(request.url())
                                << request.rawResponse().left(tuning::loggedAnswerSize);
        if (status == httpPreconditionFailed) {
            // The database lacks an attachment that it was believed to have.
            m_document->setCurrentAttachments({});
        }
        fail(status, reasonOf(request));
    }
}

void SaveTask::itemStored(const Request &request)
{
    const QString revision = request.responseObject(nullptr).value(jsonkeys::rev).toString();
    if (!isUsableRevision(revision)) {
        qCCritical(lcSaveQueue, "The database stored %s but gave no usable revision",
                   qPrintable(CouchUrl::displayText(request.url())));
        fail(request.responseCode(), QStringLiteral("The database gave no usable revision"));
        return;
    }
    m_revision = revision;
    m_conflicts = 0;
    const TransferItem item = m_items.takeFirst();
    m_bytesDone += item.size;
    qCDebug(lcSaveQueue) << "Successfully transferred" << CouchUrl::displayText(item.url)
                         << item.contentType << "with status code" << request.responseCode();
    sendNext();
}

// Conflicts

void SaveTask::fetchRevision()
{
    auto *request =
        new HeadRequest(QNetworkRequest(m_url), m_context->networkAccessManager(), this);
    request->setSuppressErrors(true);
    connect(request, &Request::finished, this, [this, request] { handleRevision(*request); });
}

void SaveTask::handleRevision(const Request &request)
{
    if (failIfGone()) {
        return;
    }
    const bool isFound = request.responseCode() == httpOk;
    const QString revision =
        isFound ? revisionOfETag(request.reply()->rawHeader("ETag")) : QString();
    if (revision.isEmpty()) {
        qCCritical(lcSaveQueue) << "Fetch of document revision failed with status"
                                << request.responseCode() << CouchUrl::displayText(request.url());
        fail(request.responseCode(),
             isFound ? QStringLiteral("The database gave no usable revision")
                     : request.errorString());
    } else if (revision == m_revision) {
        sendAgain(); // it was the connection
    } else {
        resolveConflict(revision);
    }
}

void SaveTask::resolveConflict(const QString &remoteRevision)
{
    const QPointer<SaveTask> self(this);
    const auto resolution = m_context->resolveConflict(m_document, remoteRevision);
    if (!self || failIfGone()) {
        return;
    }
    if (resolution == Context::KeepRemote) {
        keepRemote(remoteRevision);
    } else if (resolution == Context::StopSaving) {
        qCCritical(lcSaveQueue, "Document %s is not saved: the database holds revision %s",
                   qPrintable(m_id), qPrintable(remoteRevision));
        fail(httpConflict, QStringLiteral("Somebody else has edited the document"));
    } else {
        qCWarning(lcSaveQueue,
                  "Document %s: local wins over revision %s in the database, edited "
                  "here since revision %s",
                  qPrintable(m_id), qPrintable(remoteRevision),
                  m_revision.isEmpty() ? "(none)" : qPrintable(m_revision));
        m_revision = remoteRevision;
        sendAgain();
    }
}

void SaveTask::sendAgain()
{
    if (++m_conflicts <= tuning::promptConflictRetries) {
        sendNext();
        return;
    }
    const std::chrono::milliseconds delay = waitAfter(m_conflicts);
    if (m_conflicts == tuning::promptConflictRetries + 1) {
        qCWarning(lcSaveQueue,
                  "Document %s still meets a conflict: from now on there is a wait before each "
                  "attempt",
                  qPrintable(m_id));
    }
    Clock::instance().singleShot(delay, this, [this] { sendNext(); });
}

void SaveTask::keepRemote(const QString &remoteRevision)
{
    qCWarning(
        lcSaveQueue,
        "Document %s: remote wins with revision %s, the edits made here since revision %s are "
        "dropped",
        qPrintable(m_id), qPrintable(remoteRevision), qPrintable(m_revision));
    const QPointer<SaveTask> self(this);
    m_context->dropEdits(m_document);
    if (self) {
        complete();
    }
}

// The end

void SaveTask::finish()
{
    if (m_cache) {
        m_cache->invalidate(m_id);
    }
    const QPointer<SaveTask> self(this);
    constexpr int noCount = -1;
    m_document->markClean(m_revision, m_isEdited ? noCount : m_dirtyCount, m_attachments);
    if (self) {
        complete();
    }
}

void SaveTask::complete()
{
    const QPointer<SaveTask> self(this);
    const QString id = m_id;
    m_progress = 1.0;
    Q_EMIT progressChanged();
    if (!self) {
        return;
    }
    m_body.reset();
    m_status = Finished;
    Q_EMIT finished();
    qCInfo(lcSaveQueue, "Finished transfer of document %s", qPrintable(id));
}

void SaveTask::fail(int statusCode, const QString &reason)
{
    m_failure = SaveFailure(m_id, m_document, statusCode, reason);
    m_status = Failed;
    Q_EMIT finished();
}

bool SaveTask::failIfGone()
{
    if (m_document && m_context) {
        return false;
    }
    qCCritical(lcSaveQueue, "Document %s went while it was being saved", qPrintable(m_id));
    fail(0, QStringLiteral("The document has gone"));
    return true;
}

} // namespace vo::data

#include "moc_savetask_p.cpp"
