// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: its stored JSON, in both directions.

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/properties/jsonconversion_p.h>

#include <vorrel/core/version.h>

#include <QtCore/QJsonArray>
#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

namespace {

/// What documents that do not tell their version were written by.
QString firstVersion()
{
    return QStringLiteral("0.9.26");
}

QJsonArray sortedArray(const QSet<QString> &ids)
{
    QStringList sorted = ids.values();
    sorted.sort();
    return QJsonArray::fromStringList(sorted);
}

} // namespace

QJsonObject LinkedDocument::serialize() const
{
    QJsonObject object = Document::serialize();
    object.insert(jsonkeys::id, documentId());
    if (!d->revision.isEmpty()) {
        object.insert(jsonkeys::revision, revision());
    }
    if (object.value(jsonkeys::label).toString().isEmpty()) {
        object.remove(jsonkeys::label);
    }
    QSet<QString> references;
    aggregateReferences(references);
    object.insert(jsonkeys::references, sortedArray(references));
    object.insert(jsonkeys::created, isoDateFromMSecs(d->created));
    object.insert(jsonkeys::edited, isoDateFromMSecs(d->edited));
    // Despite its name the key tells which version wrote the document last.
    d->creationVersion = Version::currentVersion();
    object.insert(jsonkeys::creationVersion, d->creationVersion);
    if (!d->content().entries.isEmpty()) {
        object.insert(jsonkeys::customData, d->content().entries.toObject());
    }
    const QJsonValue accessControl = accessController()->parameters();
    if (!accessControl.isNull()) {
        object.insert(jsonkeys::accessControl, accessControl);
    }
    return object;
}

void LinkedDocument::assignData(const QJsonObject &object)
{
    const QPointer<LinkedDocument> self(this);
    d->creationVersion = object.value(jsonkeys::creationVersion).toString(firstVersion());
    d->created = msecsFromIsoDate(object.value(jsonkeys::created).toString());
    d->edited = msecsFromIsoDate(object.value(jsonkeys::edited).toString());
    Q_EMIT editedChanged();
    if (!self) {
        return;
    }
    setDocumentId(object.value(jsonkeys::id).toString());
    setRevision(object.value(jsonkeys::revision).toString());
    if (self && object.value(jsonkeys::wasCached).toBool()) {
        markAsCached();
    }
    const QJsonValue data = object.value(jsonkeys::customData);
    if (self && !data.isUndefined()) {
        assignCustomData(data.toObject());
    }
    if (self && accessController()->setParameters(object.value(jsonkeys::accessControl))) {
        scheduleAccessLevelUpdate();
        Q_EMIT accessControlParametersChanged();
    }
    if (self) {
        Document::assignData(object);
    }
}

void LinkedDocument::reload(const QJsonObject &object)
{
    // Left out of the stored form when they are empty; a missing key keeps the former value.
    QJsonObject complete = object;
    if (!object.contains(jsonkeys::label)) {
        complete.insert(jsonkeys::label, QString());
    }
    if (!object.contains(jsonkeys::customData) && !d->content().entries.isEmpty()) {
        complete.insert(jsonkeys::customData, QJsonObject());
    }
    const QPointer<LinkedDocument> self(this);
    assignData(complete);
    if (self) {
        lock(); // what it converts is no edit
        convert(complete);
        unlock();
    }
}

} // namespace vo::data
