// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/schema/schemavariable.h>

#include <QtQml/QQmlListProperty>

namespace vo::data {

/// An ordered list of typed variables that users define. A document that embeds a SchemaValueStore
/// with this schema has a value for each of them.
///
///     const schema = context.createDocument("schema")
///     const width = schema.insertVariable("schemavariable:integer")
///     width.name = "Width"
///     width.unit = "mm"
///
/// A variable is found by the symbol that it had when it entered the list. Whoever gives it another
/// one removes it and inserts it again:
///
///     width.symbol = "width"
///     schema.removeVariable(width)
///     schema.insertVariable(width)
class VORREL_DATACORE_EXPORT Schema : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Schema)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "schema")
    Q_PROPERTY(QQmlListProperty<vo::data::SchemaVariable> variables READ variableList NOTIFY
                   variablesChanged)

public:
    explicit Schema(Context *context);
    ~Schema() override;

    [[nodiscard]] StorageFlags storageFlags() const override;

    /// The variables are there at once, for the value stores that are made next.
    void assignData(const QJsonObject &object) override;
    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

    [[nodiscard]] QList<SchemaVariable *> variables() const;
    [[nodiscard]] QQmlListProperty<SchemaVariable> variableList();

    /// The variable that had the symbol \p name when it entered the list, or null.
    Q_INVOKABLE [[nodiscard]] vo::data::SchemaVariable *variableByName(const QString &name) const;
    Q_INVOKABLE [[nodiscard]] vo::data::SchemaVariable *variableByUuid(const QString &uuid) const;

    /// Edits, false where they change nothing. An index out of range appends; a variable that is in
    /// the list already moves.
    Q_INVOKABLE bool insertVariable(vo::data::SchemaVariable *variable, int index = -1);
    Q_INVOKABLE bool removeVariable(vo::data::SchemaVariable *variable);

    /// Makes a variable of \p type, such as "schemavariable:integer", with a new uuid unless one is
    /// given. Null below WriteAccess and if there is no such type of variables.
    Q_INVOKABLE vo::data::SchemaVariable *insertVariable(const QString &type,
                                                         const QString &uuid = {}, int index = -1);

Q_SIGNALS:
    void variablesChanged();

    /// A value store has taken this schema, or has left it.
    void valueStoresChanged();

private:
    friend class SchemaValueStore;

    /// Whatever the access level is: what is stored does not depend on who may read it.
    [[nodiscard]] QList<SchemaVariable *> storedVariables() const;

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
