// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemaenumerationentry.h>
#include <vorrel/data/schema/schemavariable.h>

#include <QtQml/QQmlListProperty>

namespace vo::data {

/// A variable for one of several entries: the index of it, from 0. An index below 0 means none, and
/// readers have to expect one beyond the last entry, since entries may be removed.
class VORREL_DATACORE_EXPORT SchemaEnumerationVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaEnumerationVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "enumeration")
    Q_CLASSINFO("ValueEditor", "SchemaEnumerationValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaEnumerationValueEditor.qml")
    Q_PROPERTY(QQmlListProperty<vo::data::SchemaEnumerationEntry> entries READ entryList NOTIFY
                   entriesChanged)
    VO_PROPERTY(int, index, setIndex)

public:
    explicit SchemaEnumerationVariable(Document *parent);
    ~SchemaEnumerationVariable() override;

    [[nodiscard]] QList<SchemaEnumerationEntry *> entries() const;
    [[nodiscard]] QQmlListProperty<SchemaEnumerationEntry> entryList();

    /// Appends a new entry; null below WriteAccess.
    Q_INVOKABLE vo::data::SchemaEnumerationEntry *addEntry(const QString &name);

    /// An index out of range appends; an entry that is in the list already moves.
    Q_INVOKABLE bool insertEntry(vo::data::SchemaEnumerationEntry *entry, int index = -1);
    Q_INVOKABLE bool removeEntry(vo::data::SchemaEnumerationEntry *entry);

    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;

    /// Not beyond the last entry; -1 if there are none.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

Q_SIGNALS:
    void entriesChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
