// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/savefailure.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

SaveFailure::SaveFailure() = default;

SaveFailure::SaveFailure(const QString &documentId, Document *document, int status,
                         const QString &reason)
    : m_documentId(documentId)
    , m_document(document)
    , m_status(status)
    , m_reason(reason)
{ }

QString SaveFailure::documentId() const
{
    return m_documentId;
}

Document *SaveFailure::document() const
{
    return m_document;
}

int SaveFailure::status() const
{
    return m_status;
}

QString SaveFailure::reason() const
{
    return m_reason;
}

} // namespace vo::data

#include "moc_savefailure.cpp"
