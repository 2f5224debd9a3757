// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemalinkvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

SchemaLinkVariable::SchemaLinkVariable(Document *parent, QLatin1String storedType,
                                       QLatin1String key)
    : SchemaVariable(parent)
    , m_storedType(storedType)
    , m_key(key)
{ }

SchemaLinkVariable::~SchemaLinkVariable() = default;

QVariant SchemaLinkVariable::defaultValue() const
{
    return variant(nullptr);
}

QVariant SchemaLinkVariable::fromJson(const QJsonObject &object) const
{
    const QJsonValue json = object.value(m_key);
    return json.isString() || json.isNull() ? link(json) : refuse(object);
}

QVariant SchemaLinkVariable::link(const QJsonValue &json) const
{
    const QString id = json.toString();
    const DocumentNode *node = !id.isEmpty() && isStorableId(id)
        ? documentStore(context()).documentNode(id.toLatin1())
        : nullptr;
    // Built now: a link that reads as null would be stored as null.
    LinkedDocument *document = node ? node->document() : nullptr;
    return variant(document && !document->deleted() ? document : nullptr);
}

QJsonObject SchemaLinkVariable::toJson(const QVariant &value) const
{
    const Document *document = linkedDocument(value);
    return { { jsonkeys::type, m_storedType },
             { m_key, document ? QJsonValue(document->documentId()) : QJsonValue() } };
}

Document *SchemaLinkVariable::linkedDocument(const QVariant &value) const
{
    return qobject_cast<Document *>(value.value<QObject *>());
}

bool SchemaLinkVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return a.isValid() == b.isValid() && linkedDocument(a) == linkedDocument(b);
}

QVariant SchemaLinkVariable::sanitize(const QVariant &value) const
{
    const QObject *object = value.value<QObject *>();
    Document *document = linkedDocument(value);
    if (document && document->context() != context()) {
        qCWarning(lcSchema, "Cannot set document from different context");
        return {};
    }
    const QVariant link = variant(document);
    return object && !linkedDocument(link) ? QVariant() : link;
}

} // namespace vo::data

#include "moc_schemalinkvariable.cpp"
