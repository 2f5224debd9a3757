// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: the free-form data, kept as one JSON object. A struct "hours" is the object under
// "s:hours". A field may hold a reference to a document: the text "$ref(0,<id>)".

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/linkeddocument_p.h>

#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>

namespace vo::data {

namespace {

QString structKey(const QString &key)
{
    return jsonkeys::structPrefix + key;
}

bool isReference(const QJsonValue &value)
{
    return value.toString().startsWith(QLatin1String("$ref("));
}

/// The id in a reference to a document; empty for other texts.
QString referencedDocument(const QJsonValue &value)
{
    static const QRegularExpression pattern(QStringLiteral("\\A\\$ref\\(0,([\\w\\-\\.]+)\\)\\z"));
    return isReference(value) ? pattern.match(value.toString()).captured(1) : QString();
}

template <typename Function>
void forEachStructField(const QJsonObject &data, Function function)
{
    for (auto it = data.begin(); it != data.end(); ++it) {
        if (it.key().startsWith(jsonkeys::structPrefix)) {
            const QString key = it.key().mid(jsonkeys::structPrefix.size());
            const QJsonObject fields = it.value().toObject();
            for (auto field = fields.begin(); field != fields.end(); ++field) {
                function(key, field.key(), field.value());
            }
        }
    }
}

} // namespace

void LinkedDocument::assignCustomData(const QJsonObject &data)
{
    d->data = data;
    const QPointer<LinkedDocument> self(this);
    Q_EMIT structValueChanged(QString(), QString());
    if (self) {
        Q_EMIT listChanged(QString());
    }
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
    if (accessLevel() < WriteAccess) {
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
    if (value.isUndefined()) {
        fields.remove(field);
    } else {
        fields.insert(field, value);
    }
    d->data.insert(structKey(key), fields);
    const QPointer<LinkedDocument> self(this);
    Q_EMIT structValueChanged(key, field);
    if (self) {
        markDirty();
    }
}

void LinkedDocument::clearStructReferences()
{
    const QPointer<LinkedDocument> self(this);
    const QJsonObject data = d->data;
    forEachStructField(data, [&](const QString &key, const QString &field, const QJsonValue &value) {
        if (self && isReference(value)) {
            setStructValue(key, field, QJsonValue::Null);
        }
    });
}

void LinkedDocument::aggregateReferences(QSet<QString> &ids) const
{
    Document::aggregateReferences(ids);
    forEachStructField(d->data, [&](const QString &, const QString &, const QJsonValue &value) {
        const QString id = referencedDocument(value);
        if (!id.isEmpty()) {
            ids.insert(id);
        }
    });
}

} // namespace vo::data
