// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/reloadingupdatehandler.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/linkeddocument.h>

#include <vorrel/core/getrequest.h>

#include <QtCore/QJsonArray>

namespace vo::data {

namespace {

constexpr int httpNotFound = 404;

void warnOfConflict(const LinkedDocument *document)
{
    qCWarning(lcContext, "Document %s was edited by somebody else, too: its unsaved edits stay",
              qPrintable(document->documentId()));
}

} // namespace

ReloadingUpdateHandler::ReloadingUpdateHandler() = default;

ReloadingUpdateHandler::~ReloadingUpdateHandler() = default;

void ReloadingUpdateHandler::update(LinkedDocument *document)
{
    if (document->isDirty()) {
        warnOfConflict(document);
        return;
    }
    const QString id = document->documentId();
    const auto known = m_reloads.find(id);
    if (known != m_reloads.end() && known->document == document) {
        known->again = true;
        return;
    }
    // Another object may have had the id when its data was asked for: then once more.
    const bool isUnderway = known != m_reloads.end();
    m_reloads.insert(id, { document, {}, {}, isUnderway });
    if (!isUnderway) {
        m_waiting.push_back(id);
    }
    fetchNext();
}

void ReloadingUpdateHandler::fetchNext()
{
    while (m_running < tuning::parallelReloads && !m_waiting.empty()) {
        const QString id = m_waiting.front();
        m_waiting.pop_front();
        fetch(id);
    }
}

void ReloadingUpdateHandler::fetch(const QString &id)
{
    Reload &reload = m_reloads[id];
    if (!reload.document) {
        m_reloads.remove(id);
        return;
    }
    reload.revision = reload.document->revision();
    reload.url = reload.document->documentUrl();
    reload.again = false;
    const Context *context = reload.document->context();
    auto *request =
        new GetRequest(QNetworkRequest(reload.url), context->networkAccessManager(), this);
    request->setSuppressErrors(true);
    ++m_running;
    connect(request, &Request::finished, this, [this, id, request] { handleAnswer(id, *request); });
}

// False when the document has gone, was edited or saved meanwhile, or another database is open.
bool ReloadingUpdateHandler::mayReload(const QString &id) const
{
    const Reload reload = m_reloads.value(id);
    const LinkedDocument *document = reload.document;
    if (!document || document->revision() != reload.revision
        || document->documentUrl() != reload.url) {
        return false;
    }
    if (document->isDirty()) {
        warnOfConflict(document);
    }
    return !document->isDirty();
}

void ReloadingUpdateHandler::handleAnswer(const QString &id, const Request &request)
{
    --m_running;
    const QJsonObject data = request.isOk(200) ? request.responseObject(nullptr) : QJsonObject();
    if (request.responseCode() == httpNotFound || !mayReload(id)) {
        finish(id); // where it was deleted, the change feed says so itself
    } else if (data.value(jsonkeys::id).toString() == id) {
        const Context *context = m_reloads.value(id).document->context();
        if (const QSharedPointer<DocumentCache> cache = context->documentCache()) {
            cache->insert(id, request.rawResponse());
        }
        loadReferences(id, data);
    } else {
        repeatLater(id);
    }
    fetchNext();
}

// A link to a document that is not there would be dropped, and be lost with the next upload.
void ReloadingUpdateHandler::loadReferences(const QString &id, const QJsonObject &data)
{
    QStringList references;
    const QJsonArray array = data.value(jsonkeys::references).toArray();
    for (const QJsonValue &value : array) {
        if (!value.toString().isEmpty()) {
            references.append(value.toString());
        }
    }
    const LoadRequest *request = m_reloads.value(id).document->context()->loadDocuments(references);
    connect(request, &LoadRequest::finished, this, [this, id, data] { apply(id, data); });
}

void ReloadingUpdateHandler::apply(const QString &id, const QJsonObject &data)
{
    const QPointer<ReloadingUpdateHandler> self(this);
    if (mayReload(id)) {
        m_reloads.value(id).document->reload(data);
    }
    if (self) {
        finish(id);
    }
}

void ReloadingUpdateHandler::finish(const QString &id)
{
    const Reload reload = m_reloads.take(id);
    if (reload.again && reload.document) {
        update(reload.document);
    }
}

void ReloadingUpdateHandler::repeatLater(const QString &id)
{
    Clock::instance().singleShot(tuning::reloadRetry, this, [this, id] {
        m_waiting.push_back(id);
        fetchNext();
    });
}

} // namespace vo::data

#include "moc_reloadingupdatehandler.cpp"
