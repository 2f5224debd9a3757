// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentmodelpropertyroles.h>

#include <vorrel/data/core/document.h>

#include <QtCore/QDebug>
#include <QtCore/QMetaProperty>

namespace vo::data {

namespace {

/// One for all models, on purpose: applications count on it that the last one decides.
QHash<int, QByteArray> &sharedRoles()
{
    static QHash<int, QByteArray> roles;
    return roles;
}

} // namespace

DocumentModelPropertyRoles::DocumentModelPropertyRoles(QObject *parent)
    : DocumentModel(parent)
{
    updateRoles();
    connect(this, &DocumentModelPropertyRoles::propertiesChanged, this,
            &DocumentModelPropertyRoles::updateRoles);
}

DocumentModelPropertyRoles::~DocumentModelPropertyRoles() = default;

QStringList DocumentModelPropertyRoles::properties() const
{
    return m_properties;
}

void DocumentModelPropertyRoles::setProperties(const QStringList &properties)
{
    if (m_properties != properties) {
        m_properties = properties;
        Q_EMIT propertiesChanged();
    }
}

QVariant DocumentModelPropertyRoles::data(const QModelIndex &index, int role) const
{
    const QVariant listed = DocumentModel::data(index, DocumentRole);
    const auto name = sharedRoles().constFind(role);
    if (role == DocumentRole || !listed.isValid()) {
        return listed;
    }
    const auto *document = listed.value<Document *>();
    if (name == sharedRoles().constEnd() || !document) {
        return {};
    }
    const QMetaObject *metaObject = document->metaObject();
    const int property = metaObject->indexOfProperty(name->constData());
    if (property < 0) {
        qCritical() << "vo::data::DocumentModelPropertyRoles::data"
                    << "Property not defined in Document";
        return {};
    }
    return metaObject->property(property).read(document);
}

QHash<int, QByteArray> DocumentModelPropertyRoles::roleNames() const
{
    return sharedRoles();
}

void DocumentModelPropertyRoles::updateRoles()
{
    QHash<int, QByteArray> &roles = sharedRoles();
    roles.clear();
    int role = DocumentRole;
    roles.insert(role, DocumentModel::roleNames().value(role));
    for (const QString &property : std::as_const(m_properties)) {
        roles.insert(++role, property.toLatin1());
    }
}

} // namespace vo::data

#include "moc_documentmodelpropertyroles.cpp"
