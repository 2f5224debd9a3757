// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/listlengthfiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/criterion_p.h>

#include <QtQml/QQmlListReference>

namespace vo::data {

namespace {

struct ListLengthFilterFunctor
{
    bool operator()(const Document *document) const
    {
        return QQmlListReference(const_cast<Document *>(document), property).count() == expected;
    }

    QByteArray property;
    int expected;
};

} // namespace

ListLengthFilterCriterion::~ListLengthFilterCriterion() = default;

FilterFunction ListLengthFilterCriterion::createFilterFunction() const
{
    return ListLengthFilterFunctor { property().toLatin1(), m_length };
}

int ListLengthFilterCriterion::length() const
{
    return m_length;
}

void ListLengthFilterCriterion::setLength(int length)
{
    configure(this, m_length, length, &ListLengthFilterCriterion::lengthChanged,
              &ListLengthFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_listlengthfiltercriterion.cpp"
