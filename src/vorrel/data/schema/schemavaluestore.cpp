// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemavaluestore.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/plainvariant_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>
#include <vorrel/data/schema/schema.h>
#include <vorrel/data/schema/schemadata.h>
#include <vorrel/data/schema/schemavaluechange_p.h>

#include <QtCore/QHash>

#include <algorithm>
#include <utility>

namespace vo::data {

namespace {

using Values = QHash<QString, SchemaStoredValue>; // by the uuids of the variables

} // namespace

struct SchemaValueStore::Private
{
    SchemaValueStore *const q;
    LinkedDocumentProperty<Schema> schema { "schema", q };
    Values values {};
    QPointer<Schema> followed {};
    SchemaData *data = nullptr;

    void link(Document *document) const;
    void unlink(Document *document) const;
    bool replace(const Values &newValues);
    [[nodiscard]] QVariant stored(const QString &uuid) const { return values.value(uuid).get(); }
};

SchemaValueStore::SchemaValueStore(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{
    connect(this, &SchemaValueStore::schemaChanged, this, &SchemaValueStore::takeOtherSchema);
}

SchemaValueStore::~SchemaValueStore() = default;

// The schema

Schema *SchemaValueStore::schema() const
{
    return d->schema.get();
}

Schema *SchemaValueStore::storedSchema() const
{
    const QList<Document *> documents = d->schema.referencedDocuments();
    return documents.isEmpty() ? nullptr : static_cast<Schema *>(documents.first());
}

bool SchemaValueStore::setSchema(Schema *schema)
{
    return d->schema.set(schema);
}

void SchemaValueStore::takeOtherSchema()
{
    if (followSchema()) {
        Q_EMIT valuesChanged();
    }
}

// False if a slot destroyed the store.
bool SchemaValueStore::followSchema()
{
    const QPointer<SchemaValueStore> self(this);
    const QPointer<Schema> present(storedSchema());
    const QPointer<Schema> former = std::exchange(d->followed, present);
    if (former == present) {
        return true;
    }
    if (former) {
        disconnect(former, &Schema::variablesChanged, this, &SchemaValueStore::valuesChanged);
        Q_EMIT former->valueStoresChanged();
    }
    if (self && present) {
        connect(present, &Schema::variablesChanged, this, &SchemaValueStore::valuesChanged);
        Q_EMIT present->valueStoresChanged();
    }
    return !self.isNull();
}

SchemaData *SchemaValueStore::data()
{
    if (!d->data) {
        d->data = new SchemaData(this);
    }
    return d->data;
}

// Values

QVariant SchemaValueStore::value(SchemaVariable *variable) const
{
    if (!variable) {
        return {};
    }
    const QVariant stored = hasValue(variable) ? d->stored(variable->storedUuid()) : QVariant();
    return stored.isValid() ? stored : variable->defaultValue();
}

bool SchemaValueStore::hasValue(SchemaVariable *variable) const
{
    return variable && accessLevel() >= ReadAccess && d->stored(variable->storedUuid()).isValid();
}

bool SchemaValueStore::setValue(const SchemaVariable *variable, const QVariant &value)
{
    const Schema *schema = storedSchema();
    if (accessLevel() < WriteAccess || !schema || !variable
        || schema->variableByUuid(variable->storedUuid()) != variable) {
        return false;
    }
    const QVariant plain = plainVariant(value);
    const QVariant wanted = plain.isValid() ? variable->sanitize(plain) : QVariant();
    const SchemaStoredValue present = d->values.value(variable->storedUuid());
    if (variable->valuesEqual(present.get(), wanted)) {
        return false;
    }
    applyChange(std::make_unique<SchemaValueChange>(
        this, variable->storedUuid(), present,
        SchemaStoredValue(wanted, variable->linkedDocument(wanted))));
    return true;
}

void SchemaValueStore::clearValue(SchemaVariable *variable)
{
    setValue(variable, QVariant());
}

// What edits do, in both directions.
bool SchemaValueStore::setValue(const QString &uuid, const QVariant &value)
{
    const Schema *schema = storedSchema();
    const SchemaVariable *variable = schema ? schema->variableByUuid(uuid) : nullptr;
    if (!variable) {
        return false;
    }
    const QPointer<SchemaValueStore> self(this);
    const SchemaStoredValue former = d->values.take(uuid);
    const SchemaStoredValue present(value, variable->linkedDocument(value));
    if (value.isValid()) {
        d->values.insert(uuid, present);
    }
    d->unlink(former.document());
    if (self) {
        d->link(present.document());
    }
    if (self) {
        markDirty();
    }
    if (self) {
        Q_EMIT valueChanged(uuid);
    }
    if (self) {
        reportDocumentChange();
    }
    return true;
}

void SchemaValueStore::copyFrom(SchemaValueStore *other)
{
    const Schema *schema = storedSchema();
    if (!other || other == this || !schema || other->storedSchema() != schema
        || accessLevel() < WriteAccess || other->accessLevel() < ReadAccess) {
        return;
    }
    applyChange(std::make_unique<GenericChange>(this,
                                                [this, self = QPointer<SchemaValueStore>(this),
                                                 former = d->values,
                                                 present = other->d->values](bool forward) {
                                                    if (d->replace(forward ? present : former)) {
                                                        markDirty();
                                                    }
                                                    if (self) {
                                                        Q_EMIT valuesChanged();
                                                    }
                                                    if (self) {
                                                        reportDocumentChange();
                                                    }
                                                }));
}

InlineDocument *SchemaValueStore::copy(Document *parent)
{
    const QPointer<InlineDocument> document(InlineDocument::copy(parent));
    if (auto *store = qobject_cast<SchemaValueStore *>(document)) {
        store->copyFrom(this);
    }
    return document;
}

// Linked documents

void SchemaValueStore::Private::link(Document *document) const
{
    if (document) {
        connect(document, &Document::deletedChanged, q, &SchemaValueStore::dropDeletedDocuments,
                Qt::UniqueConnection);
        q->attachDocument(document);
    }
}

void SchemaValueStore::Private::unlink(Document *document) const
{
    if (!document) {
        return;
    }
    const auto isDocument = [document](const SchemaStoredValue &value) {
        return value.document() == document;
    };
    if (std::none_of(values.cbegin(), values.cend(), isDocument)) {
        disconnect(document, &Document::deletedChanged, q, &SchemaValueStore::dropDeletedDocuments);
    }
    q->detachDocument(document);
}

// False if a slot destroyed the store.
bool SchemaValueStore::Private::replace(const Values &newValues)
{
    const QPointer<SchemaValueStore> self(q);
    const Values former = std::exchange(values, newValues);
    for (const SchemaStoredValue &value : former) {
        if (self) {
            unlink(value.document());
        }
    }
    for (const SchemaStoredValue &value : newValues) {
        if (self) {
            link(value.document());
        }
    }
    return !self.isNull();
}

void SchemaValueStore::dropDeletedDocuments()
{
    if (accessLevel() < WriteAccess) {
        return;
    }
    const QPointer<SchemaValueStore> self(this);
    const Values values = d->values;
    for (auto it = values.begin(); self && it != values.end(); ++it) {
        if (it->document() && it->document()->deleted()) {
            applyChange(std::make_unique<SchemaValueChange>(this, it.key(), it.value(),
                                                            SchemaStoredValue()));
        }
    }
}

// Those that are stored: a variable may have left the schema.
QList<Document *> SchemaValueStore::linkedDocuments() const
{
    QList<Document *> documents;
    const Schema *schema = storedSchema();
    for (auto it = d->values.cbegin(); schema && it != d->values.cend(); ++it) {
        if (it->document() && schema->variableByUuid(it.key())) {
            documents.append(it->document());
        }
    }
    return documents;
}

void SchemaValueStore::aggregateReferences(QSet<QString> &ids) const
{
    InlineDocument::aggregateReferences(ids);
    const QList<Document *> documents = linkedDocuments();
    for (const Document *document : documents) {
        ids.insert(document->documentId());
    }
}

void SchemaValueStore::aggregateDependencies(QSet<const LinkedDocument *> &documents) const
{
    InlineDocument::aggregateDependencies(documents);
    const QList<Document *> targets = linkedDocuments();
    for (const Document *target : targets) {
        target->aggregateDependencies(documents);
    }
}

// Stored data

QJsonObject SchemaValueStore::serialize() const
{
    QJsonObject object = InlineDocument::serialize();
    const Schema *schema = storedSchema();
    if (!schema) {
        return object;
    }
    QJsonObject values;
    const QList<SchemaVariable *> variables = schema->storedVariables();
    for (const SchemaVariable *variable : variables) {
        const QString uuid = variable->storedUuid();
        const auto value = d->values.constFind(uuid);
        if (value != d->values.constEnd() && value->get().isValid()) {
            values.insert(uuid, variable->toJson(value->get()));
        }
    }
    object.insert(jsonkeys::schemaValues, values);
    return object;
}

void SchemaValueStore::assignData(const QJsonObject &object)
{
    const QPointer<SchemaValueStore> self(this);
    InlineDocument::assignData(object);
    const QPointer<Schema> schema(self ? storedSchema() : nullptr); // built now
    if (!self || !followSchema()) {
        return;
    }
    const QJsonObject stored = object.value(jsonkeys::schemaValues).toObject();
    if (schema) {
        Values values;
        for (auto it = stored.begin(); schema && it != stored.end(); ++it) {
            const SchemaVariable *variable = schema->variableByUuid(it.key());
            if (variable) {
                const QVariant value = variable->fromJson(it.value().toObject());
                values.insert(it.key(), { value, variable->linkedDocument(value) });
            }
        }
        if (self) {
            d->replace(values);
        }
    } else if (!stored.isEmpty()) {
        qCWarning(lcSchema, "Document %s: %d values are dropped, their schema %s is not loaded",
                  id().constData(), int(stored.size()),
                  qPrintable(object.value(QLatin1String(d->schema.name())).toString()));
    }
    if (self) {
        Q_EMIT valuesChanged();
    }
    if (self) {
        reportDocumentChange();
    }
}

} // namespace vo::data

#include "moc_schemavaluestore.cpp"
