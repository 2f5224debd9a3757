// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/accesscontroller.h>

#include <vorrel/data/core/accessparameterchange.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

namespace vo::data {

AccessController::AccessController(LinkedDocument *document)
    : m_document(document)
{ }

AccessController::~AccessController() = default;

QJsonValue AccessController::sanitizeParameters(const QJsonValue &parameters) const
{
    return parameters;
}

QJsonValue AccessController::parameters() const
{
    return QJsonValue::Null;
}

bool AccessController::setParameters(const QJsonValue & /*parameters*/)
{
    return false;
}

void AccessController::attachDocument(Document * /*target*/) { }

void AccessController::detachDocument(Document * /*target*/) { }

LinkedDocument *AccessController::document() const
{
    return m_document;
}

void AccessController::markDirty()
{
    m_document->markDirty();
}

void AccessController::notifyChange()
{
    const QPointer<LinkedDocument> document(m_document);
    Q_EMIT document->accessControlParametersChanged();
    if (document) {
        document->reportDocumentChange();
    }
}

void AccessController::update(const QJsonValue &parameters)
{
    if (m_document->accessLevel() < Document::WriteAccess) {
        return;
    }
    const QJsonValue sanitized = sanitizeParameters(parameters);
    const QJsonValue old = this->parameters();
    if (!setParameters(sanitized)) {
        return;
    }
    if (m_document->changeRecordingActive()) {
        m_document->recordChange(new AccessParameterChange(this, old, sanitized));
    }
    finishEdit();
}

void AccessController::assign(const QJsonValue &parameters)
{
    if (setParameters(parameters)) {
        finishEdit();
    }
}

void AccessController::finishEdit()
{
    const QPointer<LinkedDocument> document(m_document);
    markDirty();
    if (document) {
        notifyChange();
    }
    if (document) {
        document->scheduleAccessLevelUpdate();
    }
}

Document::AccessLevel DefaultAccessController::accessLevel() const
{
    return Document::WriteAccess;
}

} // namespace vo::data
