// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtQml/QQmlPropertyMap>
#include <QtQml/qqml.h>

namespace vo::data {

class SchemaValueStore;

/// The values of a SchemaValueStore for QML: a property for each variable of the schema, under its
/// symbol. A write is an edit of the store, in a change set of its own. Properties of variables
/// that left the schema stay and do nothing.
///
///     TextField { text: exhibit.values.data.motto; onTextEdited: exhibit.values.data.motto = text
///     }
class VORREL_DATACORE_EXPORT SchemaData : public QQmlPropertyMap
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaData)
    QML_UNCREATABLE("It belongs to a SchemaValueStore")

public:
    ~SchemaData() override;

protected:
    QVariant updateValue(const QString &key, const QVariant &input) override;

private:
    friend class SchemaValueStore;

    explicit SchemaData(SchemaValueStore *store);
    void insertValues();

private Q_SLOTS:
    void handleValueUpdate(const QString &uuid);
    void updateValues();

private:
    SchemaValueStore *const m_store; // the parent
    bool m_writing = false;
};

} // namespace vo::data
