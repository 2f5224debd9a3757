// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/loadrequest.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

namespace vo::data {

LoadRequest::LoadRequest(const QStringList &ids, Context *context)
    : QObject(context)
{
    m_pending.reserve(ids.size());
    for (const QString &id : ids) {
        if (id.isEmpty() || !isStorableId(id)) {
            qCWarning(lcLoadQueue, "Not loading the id \"%s\": ids are Latin-1 and not empty",
                      qPrintable(id));
        } else if (context->isLoaded(id)) {
            m_loaded.append(id);
        } else {
            m_pending.insert(id);
        }
    }
    connect(this, &LoadRequest::finished, this, &QObject::deleteLater, Qt::QueuedConnection);
    if (m_pending.isEmpty()) {
        QMetaObject::invokeMethod(this, &LoadRequest::finished, Qt::QueuedConnection);
    }
}

LoadRequest::~LoadRequest() = default;

Context *LoadRequest::context() const
{
    return static_cast<Context *>(parent());
}

QSet<QString> LoadRequest::pendingDocuments() const
{
    return m_pending;
}

QList<LinkedDocument *> LoadRequest::documents() const
{
    // Built first: that runs code of the application, which may destroy some of them, or all.
    const QPointer<Context> owner(context());
    const QStringList ids = m_loaded;
    for (const QString &id : ids) {
        const DocumentNode *node = owner ? owner->documentNode(id.toLatin1()) : nullptr;
        if (node) {
            static_cast<void>(node->document());
        }
    }
    QList<LinkedDocument *> documents;
    for (const QString &id : ids) {
        const DocumentNode *node = owner ? owner->documentNode(id.toLatin1()) : nullptr;
        if (node && node->isInstantiated() && !node->document()->deleted()) {
            documents.append(node->document());
        }
    }
    return documents;
}

void LoadRequest::newDocumentNode(const QString &id)
{
    if (m_pending.remove(id)) {
        m_loaded.append(id);
        finishIfComplete();
    }
}

void LoadRequest::skipDocument(const QString &id)
{
    if (m_pending.remove(id)) {
        finishIfComplete();
    }
}

void LoadRequest::finishIfComplete()
{
    if (m_pending.isEmpty()) {
        Q_EMIT finished();
    }
}

} // namespace vo::data

#include "moc_loadrequest.cpp"
