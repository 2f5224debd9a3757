// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schema.h>

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/properties/inlinedocumentlistproperty.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>

namespace vo::data {

namespace {

/// A variable that somebody destroys leaves without a word.
using Index = QHash<QString, QPointer<SchemaVariable>>;

void removeFrom(Index &index, const SchemaVariable *variable)
{
    for (auto it = index.begin(); it != index.end();) {
        it = it.value() == variable ? index.erase(it) : std::next(it);
    }
}

} // namespace

struct Schema::Private
{
    Schema *const q;
    InlineDocumentListProperty<SchemaVariable> variables { "variables", q };
    Index bySymbol {};
    Index byUuid {};
};

Schema::Schema(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Schema::~Schema() = default;

Document::StorageFlags Schema::storageFlags() const
{
    return StoreNewDocument;
}

void Schema::assignData(const QJsonObject &object)
{
    const QPointer<Schema> self(this);
    LinkedDocument::assignData(object);
    if (self) {
        static_cast<void>(d->variables.count()); // makes them
    }
}

void Schema::attachDocument(Document *document)
{
    if (auto *variable = qobject_cast<SchemaVariable *>(document)) {
        d->bySymbol.insert(variable->storedSymbol(), variable);
        d->byUuid.insert(variable->storedUuid(), variable);
    }
    LinkedDocument::attachDocument(document);
}

void Schema::detachDocument(Document *document)
{
    if (const auto *variable = qobject_cast<SchemaVariable *>(document)) {
        removeFrom(d->bySymbol, variable);
        removeFrom(d->byUuid, variable);
    }
    LinkedDocument::detachDocument(document);
}

QList<SchemaVariable *> Schema::variables() const
{
    return d->variables.get();
}

QList<SchemaVariable *> Schema::storedVariables() const
{
    QList<SchemaVariable *> variables;
    const QList<Document *> documents = d->variables.referencedDocuments();
    for (Document *document : documents) {
        variables.append(static_cast<SchemaVariable *>(document));
    }
    return variables;
}

QQmlListProperty<SchemaVariable> Schema::variableList()
{
    return ReadOnlyObjectList<SchemaVariable>::property(
        this, [](QObject *schema) { return static_cast<Schema *>(schema)->variables(); });
}

SchemaVariable *Schema::variableByName(const QString &name) const
{
    return d->bySymbol.value(name);
}

SchemaVariable *Schema::variableByUuid(const QString &uuid) const
{
    return d->byUuid.value(uuid);
}

bool Schema::insertVariable(SchemaVariable *variable, int index)
{
    return d->variables.insert(variable, index);
}

bool Schema::removeVariable(SchemaVariable *variable)
{
    return d->variables.remove(variable);
}

SchemaVariable *Schema::insertVariable(const QString &type, const QString &uuid, int index)
{
    if (accessLevel() < WriteAccess) {
        return nullptr;
    }
    const QPointer<Schema> self(this);
    const QPointer<InlineDocument> document(InlineDocument::create(type, this));
    const QPointer<SchemaVariable> variable(qobject_cast<SchemaVariable *>(document));
    if (variable && !uuid.isEmpty()) {
        variable->setUuid(uuid);
    }
    if (!self || !variable || !insertVariable(variable, index)) {
        delete document;
        return nullptr;
    }
    return variable;
}

} // namespace vo::data

#include "moc_schema.cpp"
