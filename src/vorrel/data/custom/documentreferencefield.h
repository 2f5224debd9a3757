// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/datafield.h>

#include <QtCore/QStringList>

namespace vo::data {

/// A reference to another document:
///
///     DocumentReferenceField { name: "product"; acceptedTypes: ["product"] }
///
/// Its values are LinkedDocuments or null. The document counts the reference as it does those of
/// its properties, and a document that would close a cycle is refused.
class VORREL_DATACORE_EXPORT DocumentReferenceField : public vo::data::DataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentReferenceField)
    Q_PROPERTY(QStringList acceptedTypes READ acceptedTypes WRITE setAcceptedTypes NOTIFY
                   acceptedTypesChanged)

public:
    using DataField::DataField;
    ~DocumentReferenceField() override;

    /// True for the same object.
    [[nodiscard]] bool compare(const QVariant &a, const QVariant &b) const override;

    /// Null for everything but a document of an accepted type.
    [[nodiscard]] QVariant convert(const QVariant &value) const override;

    /// Whether a reference from \p document to that one would close no cycle; if it would, the
    /// application message "vorrel.error.DependencyCycle" tells it. True for what convert() makes
    /// null of.
    [[nodiscard]] bool acceptsValue(vo::data::LinkedDocument *document,
                                    const QVariant &value) const override;

    /// Null also for a document that is not loaded, or of another type.
    [[nodiscard]] QVariant read(vo::data::LinkedDocument *document,
                                const QString &structId) const override;
    void write(vo::data::LinkedDocument *document, const QString &structId,
               const QVariant &value) override;

    /// The types that may stand here, with those below them; empty, as at first, for all.
    [[nodiscard]] QStringList acceptedTypes() const;
    void setAcceptedTypes(const QStringList &types);

Q_SIGNALS:
    void acceptedTypesChanged();

private:
    [[nodiscard]] bool acceptsType(const LinkedDocument *document) const;

    QStringList m_acceptedTypes;
};

} // namespace vo::data
