// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: its beginning, its configuration and its end.

#include <vorrel/data/context/context.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/changefeedmonitor.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/defaultloadqueue.h>
#include <vorrel/data/context/defaultupdatehandler.h>
#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/context/reloadingupdatehandler.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/module/registration.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QTimerEvent>
#include <QtQml/QQmlEngine>

namespace vo::data {

Context::Private::Private(Context *context)
    : q(context)
    , incubator(new DocumentIncubator(context))
    , loadRequests(new LoadRequestBoard(context))
    , documents(new QObject(context))
{ }

Context::Private::~Private() = default;

Context::Context(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{
    AttachmentStore::init();
    // Without the types there would be no automatic documents. It does nothing the second time.
    _vo_data_registerTypesdata_core();
    setUpdateHandler(new DefaultUpdateHandler);
    Context::setLoadQueue(new DefaultLoadQueue(this));
    connect(d->incubator, &DocumentIncubator::incubatingChanged, this, &Context::updateBusyState);
    LinkedDocument::createAutoInstances(this);
    connect(this, &Context::saveQueueChanged, this, &Context::canSaveChanged);
    connect(this, &Context::hasLocalChangesChanged, this, &Context::canSaveChanged);
}

Context::Context(const QUrl &serviceUrl, const QString &database, QObject *parent)
    : Context(parent)
{
    d->url = serviceUrl;
    setDatabase(database);
}

Context::~Context()
{
    blockSignals(true);
    d->closing = true;
    d->updateHandler.reset();
    d->conflictReloads.reset();
    delete std::exchange(d->monitor, nullptr);
    delete std::exchange(d->loadQueue, nullptr);
    d->graphTasks.clear();
    qDeleteAll(std::exchange(d->documentLinks, {}));
    for (DocumentNode *node : std::as_const(d->documentNodes)) {
        node->release();
    }
    qDeleteAll(std::exchange(d->documentNodes, {}));
    // All at once: one by one, each document would be looked for among all others. Their
    // destructors still ask this object whether it is closing, so they cannot wait for the
    // destructor of QObject.
    delete std::exchange(d->documents, nullptr);
    d->destroyJobs();
}

AccessController *Context::createAccessController(LinkedDocument *document)
{
    return new DefaultAccessController(document);
}

bool Context::canCreateNewDocument(const QString & /*type*/) const
{
    return true;
}

// QML

void Context::classBegin()
{
    d->building = true;
    if (QQmlEngine *engine = qmlEngine(this)) {
        d->networkAccessManager = engine->networkAccessManager();
    }
}

void Context::componentComplete()
{
    d->building = false;
    if (const auto database = std::exchange(d->heldDatabase, std::nullopt)) {
        setDatabase(*database);
    }
}

// Configuration

QUrl Context::serviceUrl() const
{
    return d->url;
}

void Context::setServiceUrl(const QUrl &url)
{
    d->url = url;
}

void Context::setServiceUrlFromQml(const QUrl &url)
{
    if (url != d->url) {
        d->url = url;
        Q_EMIT serviceUrlChanged(url);
    }
}

QString Context::database() const
{
    return d->databaseName;
}

void Context::setDatabase(const QString &name)
{
    if (d->building) {
        d->heldDatabase = name;
    } else if (name != d->databaseName) {
        openDatabase(name);
    }
}

void Context::openDatabase(const QString &name)
{
    if (!d->dirtyDocuments.isEmpty()) {
        qCWarning(lcContext, "Changing the database from %s to %s with %d unsaved documents",
                  qPrintable(d->databaseName), qPrintable(name), int(d->dirtyDocuments.size()));
    }
    d->databaseName = name;
    const int change = ++d->databaseChanges;
    const QPointer<Context> self(this);
    Q_EMIT databaseChanged(name);
    if (!self || change != d->databaseChanges) {
        return; // a slot opened another one
    }
    d->followDatabase();
}

Context::ChangeFeedMonitorType Context::changeFeedMonitorType() const
{
    return d->changeFeedMonitorType;
}

void Context::setChangeFeedMonitorType(ChangeFeedMonitorType type)
{
    d->changeFeedMonitorType = type;
}

void Context::setChangeFeedMonitorTypeFromQml(ChangeFeedMonitorType type)
{
    if (type != d->changeFeedMonitorType) {
        d->changeFeedMonitorType = type;
        Q_EMIT changeFeedMonitorTypeChanged();
    }
}

Context::ContentFetchPolicy Context::contentFetchPolicy() const
{
    return d->contentFetchPolicy;
}

void Context::setContentFetchPolicy(ContentFetchPolicy policy)
{
    if (policy != d->contentFetchPolicy) {
        d->contentFetchPolicy = policy;
        Q_EMIT contentFetchPolicyChanged();
    }
}

bool Context::attachmentDownloadEnabled() const
{
    return d->contentFetchPolicy.testFlag(AutomaticAttachmentDownloadPolicy);
}

void Context::setAttachmentDownloadEnabled(bool enabled)
{
    ContentFetchPolicy policy = d->contentFetchPolicy;
    policy.setFlag(AutomaticAttachmentDownloadPolicy, enabled);
    setContentFetchPolicy(policy);
}

QNetworkAccessManager *Context::networkAccessManager() const
{
    return d->networkAccessManager;
}

void Context::setNetworkAccessManager(QNetworkAccessManager *manager)
{
    d->networkAccessManager = manager;
}

QString Context::language() const
{
    return QStringLiteral("de");
}

QString Context::country() const
{
    return QStringLiteral("AT");
}

// Ticks

void Context::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->retryTimerId) {
        d->retryErrors();
    } else if (event->timerId() == d->downloadTimerId) {
        d->reportDownloads();
    }
}

} // namespace vo::data

#include "moc_context.cpp"
