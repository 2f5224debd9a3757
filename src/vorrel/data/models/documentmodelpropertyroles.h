// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/documentmodel.h>

#include <QtCore/QStringList>

namespace vo::data {

/// A DocumentModel whose roles are properties of the documents, for views that ask for roles by
/// name. They come instead of "label" and "selected".
///
///     DocumentModelPropertyRoles {
///         id: rows
///         documents: sorted.result
///         properties: ["label", "serialNumber"]
///     }
///     ListView { model: rows; delegate: Text { text: label + " " + serialNumber } }
///
/// **All models of this class have the same roles**, those of the one whose `properties` were set
/// last: an application keeps to one list of them. A view reads the names of the roles when it gets
/// the model, and does not hear of later ones.
class VORREL_DATACORE_EXPORT DocumentModelPropertyRoles : public vo::data::DocumentModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentModelPropertyRoles)
    Q_PROPERTY(QStringList properties READ properties WRITE setProperties NOTIFY propertiesChanged)

public:
    explicit DocumentModelPropertyRoles(QObject *parent = nullptr);
    ~DocumentModelPropertyRoles() override;

    /// Names of Qt properties; that of the role behind DocumentRole first. Dynamic properties do
    /// not count.
    [[nodiscard]] QStringList properties() const;
    void setProperties(const QStringList &properties);

    /// The value of the property in that document; invalid for a null. A document that has no such
    /// property gives an invalid value, too, and a critical line.
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void propertiesChanged();

private Q_SLOTS:
    /// Gives all models of this class the roles of this one.
    void updateRoles();

private:
    QStringList m_properties;
};

} // namespace vo::data
