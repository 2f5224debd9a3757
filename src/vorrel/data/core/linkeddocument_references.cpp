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

// Brings the counts in line with data that was replaced as a whole. Documents that stay referred to
// stay attached, and nothing is built.
void LinkedDocument::Private::recountReferences()
{
    FreeFormData &data = content();
    QHash<QString, int> difference;
    for (auto it = data.referenceCounts.begin(); it != data.referenceCounts.end(); ++it) {
        difference.insert(it.key(), -it.value());
    }
    data.entries.visit([&](const auto &entries) {
        forEachStructText(entries, [&](const QString &text, auto...) {
            if (isReference(text)) {
                ++difference[text];
            }
        });
    });
    countReferences(difference);
}

// All counts are right before anything is attached or detached: both call others, who may edit.
void LinkedDocument::Private::countReferences(const QHash<QString, int> &difference)
{
    QHash<QString, int> &counts = content().referenceCounts;
    QStringList changed;
    for (auto it = difference.begin(); it != difference.end(); ++it) {
        if (it.value() == 0 || !referenceType(std::get<int>(referenceData(it.key())))) {
            continue;
        }
        const int before = counts.value(it.key());
        const int after = before + it.value();
        if (after > 0) {
            counts.insert(it.key(), after);
        } else {
            counts.remove(it.key());
        }
        if ((before > 0) != (after > 0)) {
            changed.append(it.key());
        }
    }
    const QPointer<LinkedDocument> self(q);
    for (const QString &text : std::as_const(changed)) {
        if (self) {
            const auto [target, number] = referenceData(text);
            const ReferenceType *type = referenceType(number);
            if (content().referenceCounts.contains(text)) {
                type->attachById(q, target);
            } else {
                type->remove(q, target);
            }
        }
    }
}

void LinkedDocument::addReference(const QObject *object)
{
    d->countReferences({ { encodeReference(object), 1 } });
}

void LinkedDocument::removeReference(const QObject *object)
{
    d->countReferences({ { encodeReference(object), -1 } });
}

bool LinkedDocument::hasReference(const QObject *object) const
{
    return d->content().referenceCounts.contains(encodeReference(object));
}

bool LinkedDocument::hasReference(const QByteArray &id, int type) const
{
    return d->content().referenceCounts.contains(encodeReference(type, QString::fromLatin1(id)));
}

QList<QObject *> LinkedDocument::references(int type) const
{
    const ReferenceType *kind = referenceType(type);
    QList<QObject *> objects;
    const QPointer<const LinkedDocument> self(this);
    // A copy, since building a document may change anything.
    const QStringList texts = kind ? d->content().referenceCounts.keys() : QStringList();
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
    const QHash<QString, int> counts = d->content().referenceCounts;
    for (auto it = counts.keyBegin(); it != counts.keyEnd(); ++it) {
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
    const QString purged = encodeReference(object);
    d->forEachReference([&](const QString &text, const QString &key, const QString &field) {
        if (self && text == purged) {
            setStructValue(key, field, QJsonValue::Null);
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
