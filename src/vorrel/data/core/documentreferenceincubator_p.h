// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iincubatable.h>

#include <QtCore/QByteArray>
#include <QtCore/QPointer>

namespace vo::data {

class LinkedDocument;

/// Attaches a referenced document that is not built yet to the document that refers to it, later.
/// Disposes of itself.
class DocumentReferenceIncubator : public IIncubatable
{
public:
    DocumentReferenceIncubator(LinkedDocument *document, const QByteArray &id);

    bool incubate(Context *context) override;
    void finishIncubation() override;

private:
    const QPointer<LinkedDocument> m_document;
    const QByteArray m_id;
};

} // namespace vo::data
