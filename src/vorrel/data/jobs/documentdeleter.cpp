// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/documentdeleter.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/jobs/databaseview_p.h>
#include <vorrel/data/jobs/referencejobs_p.h>

#include <vorrel/core/getrequest.h>

#include <algorithm>

namespace vo::data {

namespace {

constexpr int httpOk = 200;

bool isImmutable(const Document *document)
{
    return document->accessLevel() < Document::WriteAccess;
}

QList<Document *> dependantsOf(const Document *document)
{
    QSet<Document *> dependants;
    const QList<Document *> referrers = References::loaded(document);
    for (const Document *referrer : referrers) {
        dependants.insert(const_cast<Document *>(referrer->linkSource()));
    }
    return dependants.values();
}

} // namespace

// Everything is changed first and told afterwards: a slot must not find the lock of one document
// beside another one.
struct DocumentDeleter::Private
{
    /// What signals tell of.
    struct State
    {
        QList<Document *> dependants; // not followed: only compared
        LockReason lockReason = Unknown;
        Status status = Null;
    };

    explicit Private(DocumentDeleter *deleter);

    void setDocument(Document *newDocument);
    void refresh();
    void setStatus(Status newStatus);
    void updateLock();
    void announce();
    void fetch();
    void fail(const Request &failed);
    void load(const QStringList &ids);
    void takeDependants();
    void watch();
    void referrersMayHaveChanged();

    DocumentDeleter *const q;
    Status status = Null;
    LockReason lockReason = Unknown;
    QPointer<Document> document;
    DocumentList dependants;
    QPointer<GetRequest> request; // child
    QPointer<LoadRequest> loadRequest;
    State announced;
    std::unique_ptr<QObject> watcher; // of access and links, once all is known
    bool lookScheduled = false;
};

DocumentDeleter::Private::Private(DocumentDeleter *deleter)
    : q(deleter)
    , dependants(deleter, [this] {
        updateLock();
        announce();
    })
{ }

DocumentDeleter::DocumentDeleter(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{ }

DocumentDeleter::~DocumentDeleter() = default;

DocumentDeleter::Status DocumentDeleter::status() const
{
    return d->status;
}

bool DocumentDeleter::locked() const
{
    return d->lockReason != NotLocked;
}

DocumentDeleter::LockReason DocumentDeleter::lockReason() const
{
    return d->lockReason;
}

bool DocumentDeleter::referenced() const
{
    return dependantCount() > 0;
}

int DocumentDeleter::dependantCount() const
{
    return int(d->dependants.objects().size());
}

QList<LinkedDocument *> DocumentDeleter::dependants() const
{
    QList<LinkedDocument *> dependants;
    for (Document *dependant : d->dependants.objects()) {
        dependants.append(static_cast<LinkedDocument *>(dependant));
    }
    return dependants;
}

QQmlListProperty<Document> DocumentDeleter::dependantList()
{
    return ReadOnlyObjectList<Document>::property(this, [](QObject *owner) {
        return static_cast<DocumentDeleter *>(owner)->d->dependants.objects();
    });
}

Document *DocumentDeleter::document() const
{
    return d->document;
}

void DocumentDeleter::setDocument(Document *document)
{
    if (document != d->document) {
        d->setDocument(document);
    }
}

void DocumentDeleter::Private::setDocument(Document *newDocument)
{
    if (document) {
        document->disconnect(q);
    }
    document = newDocument;
    if (newDocument) {
        // Later: with it, its whole Context may be going.
        const auto forget = [this] {
            if (!document) {
                setDocument(nullptr);
            }
        };
        connect(newDocument, &QObject::destroyed, q, forget, Qt::QueuedConnection);
    }
    refresh();
    const QPointer<DocumentDeleter> self(q);
    Q_EMIT q->documentChanged();
    if (self) {
        announce();
    }
}

void DocumentDeleter::deleteDocument()
{
    if (d->status != Loaded || !d->document) {
        qCWarning(lcData) << "Cannot delete with status" << d->status;
    } else if (d->lockReason != NotLocked) {
        qCWarning(lcData) << "Cannot delete locked document, reason:" << d->lockReason;
    } else {
        d->document->remove();
    }
}

// What is told

void DocumentDeleter::Private::setStatus(Status newStatus)
{
    status = newStatus;
    updateLock();
}

void DocumentDeleter::Private::updateLock()
{
    if (!document || status != Loaded) {
        lockReason = Unknown;
    } else if (isImmutable(document)) {
        lockReason = NoWriteAccess;
    } else {
        const QList<Document *> all = dependants.objects();
        const bool isLocked = std::any_of(all.begin(), all.end(), isImmutable);
        lockReason = isLocked ? ImmutableDependant : NotLocked;
    }
}

void DocumentDeleter::Private::announce()
{
    const State now { dependants.objects(), lockReason, status };
    const State former = std::exchange(announced, now);
    const QPointer<DocumentDeleter> self(q);
    const auto tell = [&self](bool isOther, auto signal) {
        if (self && isOther) {
            Q_EMIT(self.data()->*signal)();
        }
    };
    tell(former.dependants.isEmpty() != now.dependants.isEmpty(),
         &DocumentDeleter::referencedChanged);
    tell(former.dependants.size() != now.dependants.size(),
         &DocumentDeleter::dependantCountChanged);
    tell(former.dependants != now.dependants, &DocumentDeleter::dependantsChanged);
    tell(former.lockReason != now.lockReason, &DocumentDeleter::lockReasonChanged);
    tell((former.lockReason == NotLocked) != (now.lockReason == NotLocked),
         &DocumentDeleter::lockedChanged);
    if (self && former.status != now.status) {
        Q_EMIT q->statusChanged(status);
    }
}

// Asking

void DocumentDeleter::Private::refresh()
{
    if (request) {
        request->disconnect(q);
        request->abort();
        request.clear();
    }
    if (loadRequest) {
        loadRequest->disconnect(q);
        loadRequest.clear();
    }
    watcher.reset();
    dependants.assign({});
    if (document) {
        fetch();
    } else {
        setStatus(Null);
    }
}

void DocumentDeleter::Private::fetch()
{
    setStatus(LoadingReferenceList);
    request = new GetRequest(QNetworkRequest(References::queryUrl(document)),
                             document->context()->networkAccessManager(), q);
    request->setSuppressErrors(true);
    connect(request, &Request::finished, q, &DocumentDeleter::referenceListFetchFinished);
}

void DocumentDeleter::referenceListFetchFinished()
{
    const QPointer<GetRequest> request = std::exchange(d->request, nullptr);
    if (!d->document) {
        return; // it was destroyed, and is about to be forgotten
    }
    const QJsonObject answer = request->responseObject(nullptr);
    if (!request->isOk(httpOk) || !answer.value(jsonkeys::rows).isArray()) {
        d->fail(*request);
        return;
    }
    const QStringList ids = DatabaseView::rowIds(answer);
    if (ids.isEmpty()) {
        d->takeDependants();
    } else {
        d->load(ids);
    }
}

void DocumentDeleter::Private::fail(const Request &failed)
{
    DatabaseView::reportIfMissing(failed);
    qCCritical(lcListing) << "Reference fetch request failed:" << failed.responseCode()
                          << failed.rawResponse().left(tuning::loggedAnswerSize);
    setStatus(Error);
    announce();
}

void DocumentDeleter::Private::load(const QStringList &ids)
{
    loadRequest = document->context()->loadDocuments(ids);
    if (!loadRequest) {
        return; // the Context is going
    }
    connect(loadRequest, &LoadRequest::finished, q, &DocumentDeleter::referenceFetchFinished);
    setStatus(LoadingReferences);
    announce();
}

void DocumentDeleter::referenceFetchFinished()
{
    const QPointer<DocumentDeleter> self(this);
    const QPointer<LoadRequest> request = d->loadRequest;
    static_cast<void>(request->documents()); // builds them, which may run code of the application
    if (self && d->document && d->loadRequest == request) {
        d->takeDependants();
    }
}

// Finding out

void DocumentDeleter::Private::takeDependants()
{
    const QPointer<DocumentDeleter> self(q);
    const QPointer<Document> subject(document);
    subject->context()->finishIncubation(); // so that all references are attached
    if (!self || !subject || subject != document || request) {
        return; // the application has ended this meanwhile
    }
    loadRequest.clear();
    dependants.assign(dependantsOf(document));
    setStatus(Loaded);
    watch();
    announce();
}

void DocumentDeleter::Private::watch()
{
    watcher = std::make_unique<QObject>();
    const auto lockMayHaveChanged = [this] {
        updateLock();
        announce();
    };
    connect(document, &Document::accessLevelChanged, watcher.get(), lockMayHaveChanged);
    for (const Document *dependant : dependants.objects()) {
        connect(dependant, &Document::accessLevelChanged, watcher.get(), lockMayHaveChanged);
    }
    const auto look = [this](const QByteArray & /*from*/, const QByteArray &to) {
        if (document && to == document->id()) {
            referrersMayHaveChanged();
        }
    };
    connect(document->context(), &Context::documentLinked, watcher.get(), look);
    connect(document->context(), &Context::documentUnlinked, watcher.get(), look);
}

// Many may come or go at once.
void DocumentDeleter::Private::referrersMayHaveChanged()
{
    if (lookScheduled) {
        return;
    }
    lookScheduled = true;
    const auto look = [this] {
        lookScheduled = false;
        if (document && status == Loaded) {
            dependants.assign(dependantsOf(document));
            updateLock();
            watch();
            announce();
        }
    };
    QMetaObject::invokeMethod(q, look, Qt::QueuedConnection);
}

} // namespace vo::data

#include "moc_documentdeleter.cpp"
