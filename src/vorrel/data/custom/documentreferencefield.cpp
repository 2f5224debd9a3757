// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/documentreferencefield.h>

#include <vorrel/data/core/linkeddocument.h>

#include <algorithm>

namespace vo::data {

DocumentReferenceField::~DocumentReferenceField() = default;

bool DocumentReferenceField::acceptsType(const LinkedDocument *document) const
{
    return !document || m_acceptedTypes.isEmpty()
        || std::any_of(m_acceptedTypes.begin(), m_acceptedTypes.end(),
                       [document](const QString &type) { return document->hasType(type); });
}

bool DocumentReferenceField::compare(const QVariant &a, const QVariant &b) const
{
    return a.value<QObject *>() == b.value<QObject *>();
}

QVariant DocumentReferenceField::convert(const QVariant &value) const
{
    auto *target = value.value<LinkedDocument *>();
    return QVariant::fromValue(acceptsType(target) ? target : nullptr);
}

bool DocumentReferenceField::acceptsValue(LinkedDocument *document, const QVariant &value) const
{
    auto *target = value.value<LinkedDocument *>();
    return document && (!target || !acceptsType(target) || !document->performCycleCheck(target));
}

QVariant DocumentReferenceField::read(LinkedDocument *document, const QString &structId) const
{
    if (!document) {
        return QVariant::fromValue<LinkedDocument *>(nullptr);
    }
    const QString text = document->getStructValue(structId, name()).toString();
    return convert(
        QVariant::fromValue(qobject_cast<LinkedDocument *>(document->decodeReference(text))));
}

void DocumentReferenceField::write(LinkedDocument *document, const QString &structId,
                                   const QVariant &value)
{
    if (document) {
        const QString text = LinkedDocument::encodeReference(value.value<LinkedDocument *>());
        document->setStructValue(structId, name(),
                                 text.isEmpty() ? QJsonValue::Undefined : QJsonValue(text));
    }
}

QStringList DocumentReferenceField::acceptedTypes() const
{
    return m_acceptedTypes;
}

void DocumentReferenceField::setAcceptedTypes(const QStringList &types)
{
    if (types != m_acceptedTypes) {
        m_acceptedTypes = types;
        Q_EMIT acceptedTypesChanged();
    }
}

} // namespace vo::data

#include "moc_documentreferencefield.cpp"
