// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/propertyreader_p.h>
#include <vorrel/data/models/sorters/textorder_p.h>

#include <QtCore/QStringList>

namespace vo::data {

class Document;

/// What a sort criterion makes. \a Rule gives a key for a document and compares two keys, so that
/// who sorts many documents can read each of them once.
template <typename Rule>
class CompareFunctor
{
public:
    using Key = typename Rule::Key;

    template <typename... Arguments>
    explicit CompareFunctor(bool descending, Arguments... arguments)
        : m_rule(arguments...)
        , m_descending(descending)
    { }

    int operator()(const Document *a, const Document *b) { return compareKeys(key(a), key(b)); }

    [[nodiscard]] Key key(const Document *document) { return m_rule.key(document); }

    [[nodiscard]] int compareKeys(const Key &a, const Key &b) const
    {
        const int result = m_rule.compare(a, b);
        const int sign = (result > 0) - (result < 0); // the smallest number has no opposite
        return m_descending ? -sign : sign;
    }

private:
    Rule m_rule;
    bool m_descending;
};

/// By the milliseconds since the epoch.
class DateTimeRule
{
public:
    using Key = qint64;
    explicit DateTimeRule(const QString &property)
        : m_property(property)
    { }
    Key key(const Document *document);
    [[nodiscard]] int compare(Key a, Key b) const { return (a > b) - (a < b); }

private:
    PropertyReader m_property;
};

/// By the area. Areas and their differences wrap around at 32 bits.
class SizeRule
{
public:
    using Key = quint32;
    explicit SizeRule(const QString &property)
        : m_property(property)
    { }
    Key key(const Document *document);
    [[nodiscard]] int compare(Key a, Key b) const { return int(a - b); }

private:
    PropertyReader m_property;
};

/// By the collation of the default locale.
class StringRule
{
public:
    using Key = TextOrder::Key;
    explicit StringRule(const QString &property)
        : m_property(property)
    { }
    Key key(const Document *document);
    [[nodiscard]] int compare(const Key &a, const Key &b) const { return m_order.compare(a, b); }

private:
    PropertyReader m_property;
    TextOrder m_order;
};

/// By the name of the type.
class SimpleTypeRule
{
public:
    using Key = QString;
    Key key(const Document *document);
    [[nodiscard]] int compare(const Key &a, const Key &b) const;
};

/// By the place of the type in a list.
class TypeOrderRule
{
public:
    using Key = int;
    explicit TypeOrderRule(const QStringList &types)
        : m_types(types)
    { }
    Key key(const Document *document);
    [[nodiscard]] int compare(Key a, Key b) const { return a - b; }

private:
    QStringList m_types;
};

using DateTimeCompareFunctor = CompareFunctor<DateTimeRule>;
using SizeCompareFunctor = CompareFunctor<SizeRule>;
using StringCompareFunctor = CompareFunctor<StringRule>;
using SimpleTypeCompareFunctor = CompareFunctor<SimpleTypeRule>;
using TypeOrderCompareFunctor = CompareFunctor<TypeOrderRule>;

} // namespace vo::data
