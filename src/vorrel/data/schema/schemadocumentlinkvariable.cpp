// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemadocumentlinkvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>

namespace vo::data {

SchemaDocumentLinkVariable::SchemaDocumentLinkVariable(Document *parent)
    : SchemaLinkVariable(parent, QLatin1String("schemavalue:documentlink"), jsonkeys::documentLink)
{ }

SchemaDocumentLinkVariable::~SchemaDocumentLinkVariable() = default;

QVariant SchemaDocumentLinkVariable::variant(Document *document) const
{
    return QVariant::fromValue(qobject_cast<Document *>(document));
}

} // namespace vo::data

#include "moc_schemadocumentlinkvariable.cpp"
