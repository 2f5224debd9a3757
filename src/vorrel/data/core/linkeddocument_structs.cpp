// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: the free-form data, kept as one JSON object. A struct "hours" is the object under
// "s:hours".

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/core/referencetype_p.h>

#include <QtCore/QPointer>

namespace vo::data {

namespace {

QString structKey(const QString &key)
{
    return jsonkeys::structPrefix + key;
}

} // namespace

void LinkedDocument::assignCustomData(const QJsonObject &data)
{
    const QPointer<LinkedDocument> self(this);
    d->data = data;
    recountReferences();
    if (self) {
        Q_EMIT structValueChanged(QString(), QString());
    }
    if (self) {
        Q_EMIT listChanged(QString());
    }
}

QJsonObject LinkedDocument::customData() const
{
    return d->data;
}

QJsonObject LinkedDocument::getStruct(const QString &key) const
{
    return accessLevel() < ReadAccess ? QJsonObject() : d->data.value(structKey(key)).toObject();
}

QJsonValue LinkedDocument::getStructValue(const QString &key, const QString &field) const
{
    if (accessLevel() < ReadAccess) {
        return QJsonValue::Undefined;
    }
    return d->data.value(structKey(key)).toObject().value(field);
}

bool LinkedDocument::setStructValue(const QString &key, const QString &field,
                                    const QJsonValue &value)
{
    if (accessLevel() < WriteAccess || !acceptsReference(value)) {
        return false;
    }
    const QString name = structKey(key);
    if (!d->data.contains(name)) {
        d->data.insert(name, QJsonObject());
        recordStructChange([this, name](bool forward) {
            if (forward) {
                d->data.insert(name, QJsonObject());
            } else {
                d->data.remove(name);
            }
        });
    }
    const QJsonValue old = d->data.value(name).toObject().value(field);
    if (old == value) {
        return false;
    }
    recordStructChange([this, key, field, old, value](bool forward) {
        writeStructValue(key, field, forward ? value : old);
    });
    writeStructValue(key, field, value);
    return true;
}

void LinkedDocument::recordStructChange(std::function<void(bool)> change)
{
    if (changeRecordingActive()) {
        recordChange(new GenericChange(this, std::move(change)));
    }
}

void LinkedDocument::writeStructValue(const QString &key, const QString &field,
                                      const QJsonValue &value)
{
    QJsonObject fields = d->data.value(structKey(key)).toObject();
    const QString old = fields.value(field).toString();
    if (value.isUndefined()) {
        fields.remove(field);
    } else {
        fields.insert(field, value);
    }
    d->data.insert(structKey(key), fields);
    const QPointer<LinkedDocument> self(this);
    // In this order the counts stay right if a slot writes the same field.
    countReference(value.toString());
    if (self) {
        uncountReference(old);
    }
    if (self) {
        Q_EMIT structValueChanged(key, field);
    }
    if (self) {
        markDirty();
    }
}

// Brings the counts in line with data that was replaced as a whole. Documents that stay referred to
// stay attached, and nothing is built.
void LinkedDocument::recountReferences()
{
    QHash<QString, int> counts;
    forEachStructText(d->data, [&](const QString &text, auto...) {
        if (referenceType(std::get<int>(referenceData(text)))) {
            ++counts[text];
        }
    });
    const QHash<QString, int> old = std::exchange(d->referenceCounts, counts);
    const QPointer<LinkedDocument> self(this);
    for (auto it = old.begin(); self && it != old.end(); ++it) {
        if (!counts.contains(it.key())) {
            const auto [id, type] = referenceData(it.key());
            referenceType(type)->remove(this, id);
        }
    }
    for (auto it = counts.begin(); self && it != counts.end(); ++it) {
        if (!old.contains(it.key())) {
            const auto [id, type] = referenceData(it.key());
            referenceType(type)->attachById(this, id);
        }
    }
}

void LinkedDocument::clearStructReferences()
{
    const QPointer<LinkedDocument> self(this);
    const QJsonObject data = d->data;
    forEachStructText(data, [&](const QString &text, auto structure, auto field) {
        if (self && isReference(text)) {
            setStructValue(structName(structure), field.key(), QJsonValue::Null);
        }
    });
}

void LinkedDocument::aggregateReferences(QSet<QString> &ids) const
{
    Document::aggregateReferences(ids);
    for (auto it = d->referenceCounts.keyBegin(); it != d->referenceCounts.keyEnd(); ++it) {
        const auto [id, number] = referenceData(*it);
        if (referenceType(number)->counted) {
            ids.insert(QString::fromLatin1(id));
        }
    }
}

} // namespace vo::data
