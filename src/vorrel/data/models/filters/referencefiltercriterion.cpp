// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/referencefiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/propertyreader_p.h>

#include <QtCore/QPointer>
#include <QtQml/QQmlListReference>

#include <algorithm>

namespace vo::data {

namespace {

class ReferenceFilterFunctor
{
public:
    ReferenceFilterFunctor(const QString &property, const QList<Document *> &documents)
        : m_property(property)
        , m_documents(documents.begin(), documents.end())
    { }

    bool operator()(const Document *document)
    {
        if (m_documents.isEmpty()) {
            return true;
        }
        const bool isList = m_isList.of(
            document, [&](const QMetaObject *) { return references(document).isValid(); });
        return isList ? matchesOneOf(references(document))
                      : matches(m_property.read(document).value<QObject *>());
    }

private:
    [[nodiscard]] QQmlListReference references(const Document *document) const
    {
        return { const_cast<Document *>(document), m_property.name() };
    }

    [[nodiscard]] bool matchesOneOf(const QQmlListReference &list) const
    {
        for (int index = 0; index < list.count(); ++index) {
            if (matches(list.at(index))) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool matches(QObject *object) const
    {
        const auto *target = qobject_cast<Document *>(object);
        return std::any_of(m_documents.begin(), m_documents.end(),
                           [target](const auto &document) { return document == target; });
    }

    PropertyReader m_property;
    QList<QPointer<Document>> m_documents;
    ClassFacts<bool> m_isList;
};

} // namespace

ReferenceFilterCriterion::ReferenceFilterCriterion(QObject *parent)
    : PropertyFilterCriterion(parent)
    , m_documents(new DocumentList(
          this,
          [this] {
              emitBoth(this, &ReferenceFilterCriterion::documentsChanged,
                       &ReferenceFilterCriterion::updateRequired);
          },
          DocumentList::KeepPlaces))
{ }

ReferenceFilterCriterion::~ReferenceFilterCriterion() = default;

FilterFunction ReferenceFilterCriterion::createFilterFunction() const
{
    return ReferenceFilterFunctor(property(), m_documents->objects());
}

QQmlListProperty<Document> ReferenceFilterCriterion::documents()
{
    return m_documents->property(this);
}

} // namespace vo::data

#include "moc_referencefiltercriterion.cpp"
