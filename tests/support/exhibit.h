// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/inlinedocumentproperty.h>
#include <vorrel/data/schema/schemavaluestore.h>

#include <vorrel/data/core/linkeddocument.h>

namespace vo::test {

class ExhibitValues : public data::SchemaValueStore
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "exhibitvalues")
public:
    using SchemaValueStore::SchemaValueStore;
};

/// A document with values of a schema; a new one has none yet.
class Exhibit : public data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "exhibit")
    Q_PROPERTY(vo::data::SchemaValueStore *values READ values NOTIFY valuesChanged)
public:
    using LinkedDocument::LinkedDocument;

    [[nodiscard]] data::SchemaValueStore *values() const { return m_values.get(); }
    void initialize() override;
    Q_INVOKABLE [[nodiscard]] QJsonObject stored() const { return serialize(); }

Q_SIGNALS:
    void valuesChanged();

private:
    data::InlineDocumentProperty<ExhibitValues> m_values { "values", this };
};

/// Makes both known.
void registerExhibits();

} // namespace vo::test
