// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/newids_p.h>

#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QJsonArray>

namespace vo::data {

namespace {

QString withNewId(const QString &text, const QMap<QString, QString> &ids)
{
    if (!LinkedDocument::isReference(text)) {
        return ids.value(text, text);
    }
    const auto [id, type] = LinkedDocument::referenceData(text);
    const QString mapped = type == 0 ? ids.value(QString::fromLatin1(id)) : QString();
    return mapped.isEmpty() ? text : LinkedDocument::encodeReference(type, mapped);
}

// As deep as the JSON, which its readers limit.
QJsonValue valueWithNewIds(const QJsonValue &value, const QMap<QString, QString> &ids)
{
    if (value.isString()) {
        return withNewId(value.toString(), ids);
    }
    if (value.isObject()) {
        return withNewIds(value.toObject(), ids);
    }
    if (!value.isArray()) {
        return value;
    }
    QJsonArray array = value.toArray();
    for (QJsonValueRef element : array) {
        element = valueWithNewIds(QJsonValue(element), ids);
    }
    return array;
}

} // namespace

QJsonObject withNewIds(QJsonObject object, const QMap<QString, QString> &ids)
{
    for (QJsonValueRef value : object) {
        value = valueWithNewIds(QJsonValue(value), ids);
    }
    return object;
}

} // namespace vo::data
