// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/core/inlinedocument.h>

#include <QtCore/QVariant>

namespace vo::data {

class Schema;
class SchemaData;
class SchemaVariable;

/// One value for each variable of a Schema, inside the document that embeds it. Only what was set
/// is stored; everything else has the default value of its variable.
///
/// It has no type string of its own. An application derives a class with one, registers it, and
/// holds an object of it in an InlineDocumentProperty of its document class:
///
///     class ExhibitValues : public vo::data::SchemaValueStore
///     {
///         Q_OBJECT
///         Q_CLASSINFO("DocumentType", "exhibitvalues")
///     public:
///         using SchemaValueStore::SchemaValueStore;
///     };
///
/// In QML, values are read and written by the symbols of their variables:
///
///     Slider { value: exhibit.values.data.width; onMoved: exhibit.values.data.width = value }
///
/// A document that a value links to is loaded with the embedding document. When it is deleted, the
/// value goes too, as an edit.
class VORREL_DATACORE_EXPORT SchemaValueStore : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaValueStore)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_MOC_INCLUDE("vorrel/data/schema/schema.h")
    Q_MOC_INCLUDE("vorrel/data/schema/schemadata.h")
    Q_PROPERTY(vo::data::Schema *schema READ schema NOTIFY schemaChanged)
    Q_PROPERTY(vo::data::SchemaData *data READ data NOTIFY dataChanged STORED false)

public:
    explicit SchemaValueStore(Document *parent);
    ~SchemaValueStore() override;

    /// Null below ReadAccess, and for a schema that is not loaded.
    [[nodiscard]] Schema *schema() const;

    /// An edit. The values stay, but those of variables that \p schema does not have are not
    /// stored any more.
    Q_INVOKABLE bool setSchema(vo::data::Schema *schema);

    /// The values by the symbols of their variables; made at first use, owned by the store.
    [[nodiscard]] SchemaData *data();

    /// An edit. The variable may change the value, see SchemaVariable::sanitize(); an invalid one
    /// clears it. False below WriteAccess, if nothing changes, and for a variable of another
    /// schema.
    Q_INVOKABLE bool setValue(const vo::data::SchemaVariable *variable, const QVariant &value);

    /// An edit: the value is the default one again.
    Q_INVOKABLE void clearValue(vo::data::SchemaVariable *variable);

    /// The default value below ReadAccess.
    Q_INVOKABLE [[nodiscard]] QVariant value(vo::data::SchemaVariable *variable) const;

    /// Whether a value was set, be it equal to the default value or not.
    Q_INVOKABLE [[nodiscard]] bool hasValue(vo::data::SchemaVariable *variable) const;

    /// Takes all values of \p other, as an edit. Nothing happens unless both have the same schema.
    Q_INVOKABLE void copyFrom(vo::data::SchemaValueStore *other);

    /// For the change record: neither recorded itself nor a question of access. False if the schema
    /// has no such variable.
    bool setValue(const QString &uuid, const QVariant &value);

    [[nodiscard]] InlineDocument *copy(Document *parent) override;
    [[nodiscard]] QJsonObject serialize() const override;

    /// Values of variables that the schema does not have are dropped. If the schema is not loaded
    /// all of them are, with a warning in "vorrel.schema".
    void assignData(const QJsonObject &object) override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void aggregateDependencies(QSet<const LinkedDocument *> &documents) const override;

Q_SIGNALS:
    void schemaChanged();

    /// All of them may have changed.
    void valuesChanged();

    /// The value of the variable \p uuid has changed.
    void valueChanged(const QString &uuid);

    /// The data has other keys.
    void dataChanged();

private:
    friend class SchemaData;

    [[nodiscard]] Schema *storedSchema() const;
    void takeOtherSchema();
    bool followSchema();
    [[nodiscard]] QList<Document *> linkedDocuments() const;
    void dropDeletedDocuments();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
