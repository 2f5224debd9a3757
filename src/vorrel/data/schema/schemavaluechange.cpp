// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemavaluechange_p.h>

#include <vorrel/data/schema/schemavaluestore.h>

namespace vo::data {

SchemaValueChange::SchemaValueChange(SchemaValueStore *store, const QString &uuid,
                                     const SchemaStoredValue &oldValue,
                                     const SchemaStoredValue &newValue)
    : Change(store)
    , m_store(store)
    , m_uuid(uuid)
    , m_oldValue(oldValue)
    , m_newValue(newValue)
{ }

SchemaValueChange::~SchemaValueChange() = default;

void SchemaValueChange::apply()
{
    assign(m_newValue);
}

void SchemaValueChange::unapply()
{
    assign(m_oldValue);
}

void SchemaValueChange::assign(const SchemaStoredValue &value)
{
    if (document()) {
        // Copies: what follows may make the recorder delete this change.
        m_store->setValue(QString(m_uuid), QVariant(value.get()));
    }
}

int SchemaValueChange::type() const
{
    static const int number = createType();
    return number;
}

bool SchemaValueChange::canMergeWith(const Change *other) const
{
    if (!Change::canMergeWith(other) || other->type() != type()) {
        return false;
    }
    const auto *change = static_cast<const SchemaValueChange *>(other);
    return document() && change->document() == document() && change->m_uuid == m_uuid;
}

void SchemaValueChange::mergeWith(const Change *other)
{
    m_newValue = static_cast<const SchemaValueChange *>(other)->m_newValue;
}

bool SchemaValueChange::isValid() const
{
    return document() != nullptr;
}

quint64 SchemaValueChange::uniqueKey() const
{
    const quint32 value = foldedAddress(m_store) ^ quint32(qHash(m_uuid));
    return (quint64(quint32(type())) << 32) | value;
}

} // namespace vo::data
