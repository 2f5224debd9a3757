// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

namespace vo::data {

/// What the variables for links to documents have in common. A link is stored as the id of its
/// document, and reads as null if that is not loaded or is of another class.
class VORREL_DATACORE_EXPORT SchemaLinkVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaLinkVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")

public:
    ~SchemaLinkVariable() override;

    /// A null link.
    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] Document *linkedDocument(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;

    /// Invalid for what is no document of the class, or is one of another Context.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

protected:
    SchemaLinkVariable(Document *parent, QLatin1String storedType, QLatin1String key);

    /// \p document as a pointer to the class that the values have; null if it is of another one.
    [[nodiscard]] virtual QVariant variant(Document *document) const = 0;

    /// The link with the id in \p json.
    [[nodiscard]] QVariant link(const QJsonValue &json) const;

private:
    const QLatin1String m_storedType;
    const QLatin1String m_key;
};

} // namespace vo::data
