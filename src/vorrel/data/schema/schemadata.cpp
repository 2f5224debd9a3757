// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemadata.h>

#include <vorrel/data/base/plainvariant_p.h>
#include <vorrel/data/schema/schema.h>
#include <vorrel/data/schema/schemavaluestore.h>

#include <QtCore/QPointer>

namespace vo::data {

SchemaData::SchemaData(SchemaValueStore *store)
    : QQmlPropertyMap(this, store)
    , m_store(store)
{
    connect(store, &SchemaValueStore::valueChanged, this, &SchemaData::handleValueUpdate);
    connect(store, &SchemaValueStore::valuesChanged, this, &SchemaData::updateValues);
    insertValues();
}

SchemaData::~SchemaData() = default;

QVariant SchemaData::updateValue(const QString &key, const QVariant &input)
{
    const Schema *schema = m_store->schema();
    const QPointer<SchemaVariable> variable(schema ? schema->variableByName(key) : nullptr);
    if (!variable) {
        return {};
    }
    const QPointer<SchemaData> self(this);
    variable->beginRecordChanges();
    if (self) {
        m_writing = true;
        m_store->setValue(variable, plainVariant(input));
    }
    if (self) {
        m_writing = false;
    }
    if (variable) {
        variable->endRecordChanges();
    }
    return self && variable ? m_store->value(variable) : QVariant();
}

void SchemaData::handleValueUpdate(const QString &uuid)
{
    const Schema *schema = m_store->storedSchema();
    SchemaVariable *variable = schema ? schema->variableByUuid(uuid) : nullptr;
    if (!m_writing && variable && !variable->symbol().isEmpty()) {
        insert(variable->symbol(), m_store->value(variable));
    }
}

void SchemaData::updateValues()
{
    const int before = count();
    const QPointer<SchemaData> self(this);
    insertValues();
    if (self && count() != before) {
        Q_EMIT m_store->dataChanged(); // bindings to a key that was not there are not told
    }
}

void SchemaData::insertValues()
{
    const Schema *schema = m_store->schema();
    const QList<SchemaVariable *> variables =
        schema ? schema->variables() : QList<SchemaVariable *>();
    const QPointer<SchemaData> self(this);
    const QList<QPointer<SchemaVariable>> guarded(variables.cbegin(), variables.cend());
    for (const QPointer<SchemaVariable> &variable : guarded) {
        if (self && variable && !variable->symbol().isEmpty()) {
            insert(variable->symbol(), m_store->value(variable));
        }
    }
}

} // namespace vo::data

#include "moc_schemadata.cpp"
