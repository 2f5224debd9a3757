// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentreferenceincubator_p.h>

#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

DocumentReferenceIncubator::DocumentReferenceIncubator(LinkedDocument *document,
                                                       const QByteArray &id)
    : m_document(document)
    , m_id(id)
{ }

bool DocumentReferenceIncubator::incubate(Context *context)
{
    const DocumentNode *node = documentStore(context).documentNode(m_id);
    if (!node || !m_document || !m_document->hasReference(m_id, 0)) {
        return false;
    }
    LinkedDocument *target = node->document();
    // Building it may have changed anything.
    if (target && m_document && m_document->hasReference(m_id, 0)) {
        m_document->attachReference(m_id, target);
    }
    return false;
}

void DocumentReferenceIncubator::finishIncubation()
{
    delete this;
}

} // namespace vo::data
