// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class SchemaValueStore;
class SchemaVariable;

/// One value of a store, for the QML component that edits it:
///
///     SchemaValue { id: edited; store: document.values; variable: schema.variableByName("motto") }
///     TextField { text: edited.text; onEditingFinished: edited.edit(text) }
class VORREL_DATACORE_EXPORT SchemaValue : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaValue)
    Q_MOC_INCLUDE("vorrel/data/schema/schemavaluestore.h")
    Q_MOC_INCLUDE("vorrel/data/schema/schemavariable.h")
    Q_PROPERTY(vo::data::SchemaValueStore *store READ store WRITE setStore NOTIFY storeChanged)
    Q_PROPERTY(
        vo::data::SchemaVariable *variable READ variable WRITE setVariable NOTIFY variableChanged)
    Q_PROPERTY(QVariant value READ value NOTIFY valueChanged)
    Q_PROPERTY(QString text READ text NOTIFY valueChanged)
    Q_PROPERTY(bool set READ isSet NOTIFY valueChanged)
    Q_PROPERTY(bool readOnly READ isReadOnly NOTIFY readOnlyChanged)

public:
    explicit SchemaValue(QObject *parent = nullptr);
    ~SchemaValue() override;

    /// Neither is owned; null once it has gone.
    [[nodiscard]] SchemaValueStore *store() const;
    void setStore(SchemaValueStore *store);
    [[nodiscard]] SchemaVariable *variable() const;
    void setVariable(SchemaVariable *variable);

    /// Undefined without store and variable.
    [[nodiscard]] QVariant value() const;

    /// The value as a text: of a day as "2027-05-31", of a time as "18:30:00".
    [[nodiscard]] QString text() const;

    /// Whether it is more than the default value of the variable.
    [[nodiscard]] bool isSet() const;

    /// Whether edits are refused.
    [[nodiscard]] bool isReadOnly() const;

    /// Sets the value, in a change set of its own. False, and nothing happens, for what the
    /// variable cannot take.
    Q_INVOKABLE bool edit(const QVariant &value);

    /// Brings the default value back.
    Q_INVOKABLE bool clear();

Q_SIGNALS:
    void storeChanged();
    void variableChanged();
    void valueChanged();
    void readOnlyChanged();

private:
    void handleValueChange(const QString &uuid);
    bool write(const QVariant &value);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
