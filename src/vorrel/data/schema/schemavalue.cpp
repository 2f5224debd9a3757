// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemavalue.h>

#include <vorrel/data/base/plainvariant_p.h>
#include <vorrel/data/schema/schemavaluestore.h>
#include <vorrel/data/schema/schemavariable.h>

#include <QtCore/QPointer>
#include <QtCore/QTime>

namespace vo::data {

struct SchemaValue::Private
{
    QPointer<SchemaValueStore> store {};
    QPointer<SchemaVariable> variable {};
};

SchemaValue::SchemaValue(QObject *parent)
    : QObject(parent)
    , d(new Private)
{
    connect(this, &SchemaValue::storeChanged, this, &SchemaValue::readOnlyChanged);
    connect(this, &SchemaValue::storeChanged, this, &SchemaValue::valueChanged);
    connect(this, &SchemaValue::variableChanged, this, &SchemaValue::readOnlyChanged);
    connect(this, &SchemaValue::variableChanged, this, &SchemaValue::valueChanged);
}

SchemaValue::~SchemaValue() = default;

SchemaValueStore *SchemaValue::store() const
{
    return d->store;
}

void SchemaValue::setStore(SchemaValueStore *store)
{
    if (store == d->store) {
        return;
    }
    if (d->store) {
        disconnect(d->store, nullptr, this, nullptr);
        disconnect(d->store->parentDocument(), nullptr, this, nullptr);
    }
    d->store = store;
    if (store) {
        connect(store, &SchemaValueStore::valueChanged, this, &SchemaValue::handleValueChange);
        connect(store, &SchemaValueStore::valuesChanged, this, &SchemaValue::valueChanged);
        connect(store->parentDocument(), &Document::accessLevelChanged, this,
                &SchemaValue::readOnlyChanged);
        connect(store->parentDocument(), &Document::accessLevelChanged, this,
                &SchemaValue::valueChanged);
    }
    Q_EMIT storeChanged();
}

SchemaVariable *SchemaValue::variable() const
{
    return d->variable;
}

void SchemaValue::setVariable(SchemaVariable *variable)
{
    if (variable == d->variable) {
        return;
    }
    if (d->variable) {
        disconnect(d->variable, nullptr, this, nullptr);
    }
    d->variable = variable;
    if (variable) {
        connect(variable, &SchemaVariable::defaultValueChanged, this, &SchemaValue::valueChanged);
    }
    Q_EMIT variableChanged();
}

void SchemaValue::handleValueChange(const QString &uuid)
{
    if (d->variable && d->variable->uuid() == uuid) {
        Q_EMIT valueChanged();
    }
}

QVariant SchemaValue::value() const
{
    return d->store ? d->store->value(d->variable) : QVariant();
}

QString SchemaValue::text() const
{
    const QVariant value = this->value();
    return value.userType() == QMetaType::QTime ? value.toTime().toString(Qt::ISODate)
                                                : value.toString();
}

bool SchemaValue::isSet() const
{
    return d->store && d->store->hasValue(d->variable);
}

bool SchemaValue::isReadOnly() const
{
    return !d->store || !d->variable || d->store->accessLevel() < Document::WriteAccess;
}

bool SchemaValue::edit(const QVariant &value)
{
    const QVariant plain = plainVariant(value);
    return !isReadOnly() && d->variable->sanitize(plain).isValid() && write(plain);
}

bool SchemaValue::clear()
{
    return !isReadOnly() && write(QVariant());
}

bool SchemaValue::write(const QVariant &value)
{
    const QPointer<SchemaValueStore> store(d->store);
    const QPointer<SchemaVariable> variable(d->variable);
    store->beginRecordChanges();
    if (store && variable) {
        store->setValue(variable, value);
    }
    if (store) {
        store->endRecordChanges();
    }
    return true;
}

} // namespace vo::data

#include "moc_schemavalue.cpp"
