// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/customdata.h>

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/custom/datastruct.h>
#include <vorrel/data/custom/fieldset_p.h>

#include <QtCore/QPointer>

namespace vo::data {

// Without its own type the map would hide the functions of this class.
CustomData::CustomData(DataStruct *parent)
    : QQmlPropertyMap(this, parent)
{ }

CustomData::~CustomData() = default;

// Who hears of a value may change the configuration, so that a newer update has begun, or destroy
// fields or this.
void CustomData::update(LinkedDocument *document, const QString &structId,
                        const QList<DataField *> &fields)
{
    const QPointer<CustomData> self(this);
    const QPointer<LinkedDocument> source(document);
    const QList<QPointer<DataField>> guarded(fields.begin(), fields.end());
    const int update = ++m_updates;
    QStringList others = keys();
    for (const QPointer<DataField> &field : guarded) {
        if (field) {
            others.removeAll(FieldSet::keyOf(field));
            updateField(source, structId, field);
        }
        if (!self || update != m_updates) {
            return;
        }
    }
    clearKeys(others);
}

void CustomData::updateField(LinkedDocument *document, const QString &structId,
                             const DataField *field)
{
    const QPointer<CustomData> self(this);
    const QPointer<const DataField> reader(field);
    const QVariant value = field->read(document, structId); // which may build a document
    if (!self || !reader) {
        return;
    }
    const QString key = FieldSet::keyOf(field);
    const QVariant old = this->value(key);
    if (old.userType() != value.userType() || !field->compare(old, value)) {
        store(key, value);
    }
}

void CustomData::store(const QString &key, const QVariant &value)
{
    if (!key.isEmpty()) {
        insert(key, value);
    }
}

void CustomData::clear()
{
    ++m_updates;
    clearKeys(keys());
}

void CustomData::clearKeys(const QStringList &keys)
{
    const QPointer<CustomData> self(this);
    const int update = m_updates;
    for (const QString &key : keys) {
        if (self && update == m_updates && value(key).isValid()) {
            clear(key);
        }
    }
}

QVariant CustomData::updateValue(const QString &key, const QVariant &input)
{
    return static_cast<DataStruct *>(parent())->edit(key, input);
}

} // namespace vo::data

#include "moc_customdata.cpp"
