// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/keyvaluestore.h>

#include <vorrel/data/properties/mapproperty.h>

#include <QtQml/QJSValue>

namespace vo::data {

struct KeyValueStore::Private
{
    KeyValueStore *const q;
    MapProperty<QVariant> data { "data", q };
};

KeyValueStore::KeyValueStore(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

KeyValueStore::~KeyValueStore() = default;

QJsonObject KeyValueStore::data() const
{
    return d->data.object();
}

QStringList KeyValueStore::keys() const
{
    return d->data.get().keys();
}

QVariant KeyValueStore::value(const QString &key) const
{
    return d->data.get().value(key);
}

bool KeyValueStore::setValue(const QString &key, const QVariant &value)
{
    // Objects and arrays of JavaScript arrive wrapped.
    const QVariant plain =
        value.userType() == qMetaTypeId<QJSValue>() ? value.value<QJSValue>().toVariant() : value;
    // What is kept is what will be stored: never a pointer to an object that may go.
    return d->data.set(key, QJsonValue::fromVariant(plain).toVariant());
}

bool KeyValueStore::clearValue(const QString &key)
{
    return d->data.remove(key);
}

} // namespace vo::data

#include "moc_keyvaluestore.cpp"
