// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/structvaluechange.h>

#include <vorrel/data/base/qtcompat_p.h>
#include <vorrel/data/core/linkeddocument_p.h>

namespace vo::data {

StructValueChange::StructValueChange(LinkedDocument *document, const QString &key,
                                     const QString &field, const QJsonValue &oldValue,
                                     const QJsonValue &newValue)
    : Change(document)
    , m_key(key.toUtf8())
    , m_field(field.toUtf8())
    , m_oldValue(oldValue)
    , m_newValue(newValue)
{
    FreeFormData &data = document->d->content();
    m_formerEdition = data.edition;
    m_edition = holdsReference() ? ++data.lastEdition : data.edition;
    data.edition = m_edition;
}

StructValueChange::~StructValueChange() = default;

void StructValueChange::apply()
{
    assign(m_newValue, m_edition);
}

void StructValueChange::unapply()
{
    assign(m_oldValue, m_formerEdition);
}

void StructValueChange::assign(const QJsonValue &value, int edition)
{
    if (LinkedDocument *document = linkedDocument()) {
        document->d->content().edition = edition;
        document->setStructValue(QString::fromUtf8(m_key), QString::fromUtf8(m_field), value);
    }
}

int StructValueChange::type() const
{
    static const int number = createType();
    return number;
}

bool StructValueChange::canMergeWith(const Change *other) const
{
    if (!Change::canMergeWith(other) || other->type() != type()) {
        return false;
    }
    const auto *change = static_cast<const StructValueChange *>(other);
    return document() && change->document() == document() && change->m_key == m_key
        && change->m_field == m_field && change->m_edition == m_edition;
}

void StructValueChange::mergeWith(const Change *other)
{
    m_newValue = static_cast<const StructValueChange *>(other)->m_newValue;
}

bool StructValueChange::isValid() const
{
    return document() != nullptr;
}

quint64 StructValueChange::uniqueKey() const
{
    if (holdsReference()) {
        return 0;
    }
    const quint32 names =
        quint32(qtcompat::checksum(m_key)) << 16 | quint32(qtcompat::checksum(m_field));
    return quint64(type()) ^ quint64(quintptr(document())) ^ quint64(names)
        ^ quint64(m_edition) << 48;
}

LinkedDocument *StructValueChange::linkedDocument() const
{
    return static_cast<LinkedDocument *>(document());
}

bool StructValueChange::holdsReference() const
{
    return LinkedDocument::isReference(m_oldValue.toString())
        || LinkedDocument::isReference(m_newValue.toString());
}

} // namespace vo::data
