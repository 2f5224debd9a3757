// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/typefiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/criterion_p.h>

#include <algorithm>

namespace vo::data {

namespace {

struct TypeFilterFunctor
{
    bool operator()(const Document *document) const { return types.contains(document->type()); }

    QStringList types;
};

struct SubtypeFilterFunctor
{
    bool operator()(const Document *document) const
    {
        return std::any_of(types.begin(), types.end(),
                           [document](const QString &type) { return document->hasType(type); });
    }

    QStringList types;
};

} // namespace

TypeFilterCriterion::~TypeFilterCriterion() = default;

FilterFunction TypeFilterCriterion::createFilterFunction() const
{
    if (m_matchSubtypes) {
        return SubtypeFilterFunctor { m_types };
    }
    return TypeFilterFunctor { m_types };
}

QStringList TypeFilterCriterion::types() const
{
    return m_types;
}

void TypeFilterCriterion::setTypes(const QStringList &types)
{
    configure(this, m_types, types, &TypeFilterCriterion::typesChanged,
              &TypeFilterCriterion::updateRequired);
}

bool TypeFilterCriterion::matchSubtypes() const
{
    return m_matchSubtypes;
}

void TypeFilterCriterion::setMatchSubtypes(bool matchSubtypes)
{
    configure(this, m_matchSubtypes, matchSubtypes, &TypeFilterCriterion::matchSubtypesChanged,
              &TypeFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_typefiltercriterion.cpp"
