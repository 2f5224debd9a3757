// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: references in its free-form data, as texts such as "$ref(0,<id>)". A document is
// attached once however many references name it, and may be built later than the reference.

#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/core/referencetype_p.h>

#include <QtCore/QRegularExpression>

namespace vo::data {

// The text

bool LinkedDocument::isReference(const QString &text)
{
    return text.startsWith(QLatin1String("$ref("));
}

std::tuple<QByteArray, int> LinkedDocument::referenceData(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\$ref\\((\\d+),([\\w\\-\\.]+)\\)\\z"));
    if (!isReference(text)) {
        return { QByteArray(), -1 };
    }
    const QRegularExpressionMatch match = pattern.match(text);
    bool isNumber = false;
    const int type = match.captured(1).toInt(&isNumber);
    if (!match.hasMatch() || !isNumber) {
        return { QByteArray(), -1 };
    }
    return { match.captured(2).toLatin1(), type };
}

const ReferenceType *LinkedDocument::referenceType(int type)
{
    return ReferenceType::find(type);
}

const ReferenceType *LinkedDocument::referenceType(const QObject *object)
{
    for (const ReferenceType *type : ReferenceType::all()) {
        if (object && object->metaObject()->inherits(type->metaObject)) {
            return type;
        }
    }
    return nullptr;
}

QString LinkedDocument::encodeReference(int type, const QString &id)
{
    return QStringLiteral("$ref(%1,%2)").arg(type).arg(id);
}

QString LinkedDocument::encodeReference(const QObject *object)
{
    const ReferenceType *type = referenceType(object);
    return type ? encodeReference(type->type, QString::fromLatin1(type->id(object))) : QString();
}

QObject *LinkedDocument::decodeReference(const QString &text) const
{
    const auto [id, number] = referenceData(text);
    const ReferenceType *type = referenceType(number);
    return type ? type->resolve(this, id) : nullptr;
}

// Counting

bool LinkedDocument::acceptsReference(const QJsonValue &value)
{
    const auto [id, number] = referenceData(value.toString());
    const ReferenceType *type = referenceType(number);
    return !type || type->accepts(this, id);
}

void LinkedDocument::countReference(const QString &text)
{
    const auto [id, number] = referenceData(text);
    const ReferenceType *type = referenceType(number);
    if (type && ++d->referenceCounts[text] == 1) {
        type->attachById(this, id);
    }
}

void LinkedDocument::uncountReference(const QString &text)
{
    const auto entry = d->referenceCounts.find(text);
    if (entry == d->referenceCounts.end() || --*entry > 0) {
        return;
    }
    d->referenceCounts.erase(entry);
    const auto [id, number] = referenceData(text);
    referenceType(number)->remove(this, id);
}

void LinkedDocument::addReference(const QObject *object)
{
    countReference(encodeReference(object));
}

void LinkedDocument::removeReference(const QObject *object)
{
    uncountReference(encodeReference(object));
}

bool LinkedDocument::hasReference(const QObject *object) const
{
    return d->referenceCounts.contains(encodeReference(object));
}

bool LinkedDocument::hasReference(const QByteArray &id, int type) const
{
    return d->referenceCounts.contains(encodeReference(type, QString::fromLatin1(id)));
}

QList<QObject *> LinkedDocument::references(int type) const
{
    const ReferenceType *kind = referenceType(type);
    QList<QObject *> objects;
    const QPointer<const LinkedDocument> self(this);
    // A copy, since building a document may change anything.
    const QStringList texts = kind ? d->referenceCounts.keys() : QStringList();
    for (const QString &text : texts) {
        const auto [id, number] = referenceData(text);
        QObject *object = self && number == type ? kind->resolve(this, id) : nullptr;
        if (object && !objects.contains(object)) {
            objects.append(object);
        }
    }
    return objects;
}

QList<LinkedDocument *> LinkedDocument::builtReferences() const
{
    QList<LinkedDocument *> documents;
    for (auto it = d->referenceCounts.keyBegin(); it != d->referenceCounts.keyEnd(); ++it) {
        const auto [id, number] = referenceData(*it);
        const DocumentNode *node = number == 0 ? d->store.documentNode(id) : nullptr;
        if (node && node->isInstantiated()) {
            documents.append(node->document());
        }
    }
    return documents;
}

void LinkedDocument::purgeReference(const QObject *object)
{
    const QPointer<LinkedDocument> self(this);
    const QString text = encodeReference(object);
    const QJsonObject data = d->data; // which changes below
    forEachStructText(data, [&](const QString &value, auto structure, auto field) {
        if (self && value == text) {
            setStructValue(structName(structure), field.key(), QJsonValue::Null);
        }
    });
}

// Attaching

void LinkedDocument::attachReference(const QByteArray &id, LinkedDocument *target)
{
    const QPointer<LinkedDocument> self(this);
    const QPointer<LinkedDocument> former =
        std::exchange(d->linkedReferences[id], QPointer<LinkedDocument>(target));
    if (former == target) {
        return;
    }
    attachDocument(target);
    if (self && former) {
        detachDocument(former); // another document has taken over its id
    }
}

void LinkedDocument::detachReference(const QByteArray &id)
{
    if (const QPointer<LinkedDocument> target = d->linkedReferences.take(id)) {
        detachDocument(target);
    }
}

} // namespace vo::data
