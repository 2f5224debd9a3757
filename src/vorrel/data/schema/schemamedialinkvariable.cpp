// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemamedialinkvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/documents/asset.h>
#include <vorrel/data/properties/property.h>

namespace vo::data {

struct SchemaMediaLinkVariable::Private
{
    SchemaMediaLinkVariable *const q;
    Property<QString> mediaType { "mediaType", q };
};

SchemaMediaLinkVariable::SchemaMediaLinkVariable(Document *parent)
    : SchemaLinkVariable(parent, QLatin1String("schemavalue:medialink"), jsonkeys::media)
    , d(new Private { this })
{ }

SchemaMediaLinkVariable::~SchemaMediaLinkVariable() = default;

VO_DEFINE_PROPERTY(SchemaMediaLinkVariable, QString, mediaType, setMediaType)

QVariant SchemaMediaLinkVariable::sanitize(const QVariant &value) const
{
    static const QStringList types { QStringLiteral("asset:image"), QStringLiteral("asset:video"),
                                     QStringLiteral("asset:pdf") };
    const QVariant link = SchemaLinkVariable::sanitize(value);
    const Document *document = linkedDocument(link);
    return document && types.contains(document->type()) ? link : QVariant();
}

QVariant SchemaMediaLinkVariable::variant(Document *document) const
{
    return QVariant::fromValue(qobject_cast<Asset *>(document));
}

} // namespace vo::data

#include "moc_schemamedialinkvariable.cpp"
