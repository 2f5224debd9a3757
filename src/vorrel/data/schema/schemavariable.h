// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QVariant>
#include <QtQml/QQmlComponent>

namespace vo::data {

/// One variable of a Schema: the name, type, default value and bounds of a value that each
/// SchemaValueStore of the schema holds. A subclass says how the value looks in a stored document
/// and which QML component edits it.
///
/// A subclass of an application needs Q_CLASSINFO for "DocumentType", and for "ValueEditor" and
/// "CondensedValueEditor", the names of QML files below "qrc:/data/lib/components/editors/".
class VORREL_DATACORE_EXPORT SchemaVariable : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "schemavariable")
    Q_PROPERTY(QString uuid READ uuid CONSTANT)
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY nameChanged STORED false)
    Q_PROPERTY(QVariant defaultValue READ defaultValue NOTIFY defaultValueChanged STORED false)

    /// The key of the value in SchemaData: a letter from a to z, then 2 to 63 letters, digits and
    /// "_". Anything else is refused with a warning in "vorrel.schema".
    VO_PROPERTY(QString, symbol, setSymbol)

    /// What users call it; the same as label.
    VO_PROPERTY(QString, name, setName)

public:
    enum EditorType : int {
        ValueEditor = 0,          ///< for a form
        CondensedValueEditor = 1, ///< for a row of a table
    };
    Q_ENUM(EditorType)

    explicit SchemaVariable(Document *parent);
    ~SchemaVariable() override;

    /// The name of the value in stored documents, given when the variable is made.
    [[nodiscard]] QString uuid() const;

    [[nodiscard]] QString label() const override;
    bool setLabel(const QString &label);

    /// A new variable that has no uuid yet gets one.
    void initialize() override;

    [[nodiscard]] virtual QVariant defaultValue() const = 0;

    /// The value that the stored \p object holds. One of another type gives the default value, and
    /// a warning in "vorrel.schema".
    [[nodiscard]] virtual QVariant fromJson(const QJsonObject &object) const = 0;

    /// \p value as it is stored. \pre value is as sanitize() or fromJson() gives it
    [[nodiscard]] virtual QJsonObject toJson(const QVariant &value) const = 0;

    /// The document that \p value links to, or null.
    [[nodiscard]] virtual Document *linkedDocument(const QVariant &value) const;
    [[nodiscard]] virtual bool valuesEqual(const QVariant &a, const QVariant &b) const;

    /// What a store makes of a \p value before it takes it. Invalid if this cannot be one.
    [[nodiscard]] virtual QVariant sanitize(const QVariant &value) const;

    /// The QML component that edits values of this variable, on the engine of its Context. Its root
    /// object has the properties "store" and "variable":
    ///
    ///     Loader {
    ///         sourceComponent: variable.getEditorComponent(SchemaVariable.ValueEditor)
    ///         onLoaded: { item.store = document.values; item.variable = variable }
    ///     }
    ///
    /// Null, with critical log lines in "vorrel.schema", if it cannot be loaded, and without a QML
    /// engine. Variables of one type share it; it lives as long as one of those that gave it.
    Q_INVOKABLE QQmlComponent *getEditorComponent(vo::data::SchemaVariable::EditorType type);

    // For subclasses.

    /// The default value, and a warning about the stored \p object.
    [[nodiscard]] QVariant refuse(const QJsonObject &object) const;

Q_SIGNALS:
    void defaultValueChanged();

private:
    friend class Schema;
    friend class SchemaValueStore;

    void setUuid(const QString &uuid);

    // Whatever the access level is: what is stored does not depend on who may read it.
    [[nodiscard]] QString storedUuid() const;
    [[nodiscard]] QString storedSymbol() const;

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
