// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sortorder_p.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/sorters/comparefunctors_p.h>

#include <algorithm>
#include <numeric>

namespace vo::data {

class SortOrder::Column
{
public:
    virtual ~Column() = default;
    virtual void read(std::size_t index, const Document *document) = 0;
    [[nodiscard]] virtual int compare(std::size_t a, std::size_t b) = 0;
};

namespace {

/// Of a function of the library: keys.
template <typename Functor>
class KeyColumn : public SortOrder::Column
{
public:
    KeyColumn(const Functor &functor, std::size_t size)
        : m_functor(functor)
        , m_keys(size)
    { }

    void read(std::size_t index, const Document *document) override
    {
        m_keys[index] = m_functor.key(document);
    }

    int compare(std::size_t a, std::size_t b) override
    {
        return m_functor.compareKeys(m_keys[a], m_keys[b]);
    }

private:
    Functor m_functor;
    std::vector<typename Functor::Key> m_keys;
};

/// Of a function of somebody else, which has to be asked each time.
class FunctionColumn : public SortOrder::Column
{
public:
    FunctionColumn(CompareFunction function, std::size_t size)
        : m_function(std::move(function))
        , m_documents(size)
    { }

    void read(std::size_t index, const Document *document) override
    {
        m_documents[index] = document;
    }

    int compare(std::size_t a, std::size_t b) override
    {
        return m_function(m_documents[a], m_documents[b]);
    }

private:
    const CompareFunction m_function;
    std::vector<const Document *> m_documents;
};

template <typename... Functors>
std::unique_ptr<SortOrder::Column> makeColumn(const CompareFunction &function, std::size_t size)
{
    std::unique_ptr<SortOrder::Column> column;
    const auto tryFunctor = [&](const auto *functor) {
        using Functor = std::decay_t<decltype(*functor)>;
        if (functor) {
            column = std::make_unique<KeyColumn<Functor>>(*functor, size);
        }
    };
    (tryFunctor(function.target<Functors>()), ...);
    return column ? std::move(column) : std::make_unique<FunctionColumn>(function, size);
}

} // namespace

SortOrder::SortOrder() = default;

SortOrder::~SortOrder() = default;

void SortOrder::sort(const QList<Document *> &documents,
                     const std::vector<CompareFunction> &functions)
{
    const auto size = std::size_t(documents.size());
    m_documents = documents;
    m_ids.assign(size, {});
    m_columns.clear();
    for (const CompareFunction &function : functions) {
        m_columns.push_back(
            makeColumn<DateTimeCompareFunctor, SizeCompareFunctor, StringCompareFunctor,
                       SimpleTypeCompareFunctor, TypeOrderCompareFunctor>(function, size));
    }
    for (std::size_t index = 0; index < size; ++index) {
        read(index);
    }
    m_order.resize(size);
    std::iota(m_order.begin(), m_order.end(), 0);
    // Areas that wrap give no true order. This kind of sort stays within its bounds all the same.
    std::stable_sort(m_order.begin(), m_order.end(),
                     [this](int a, int b) { return isBefore(a, b); });
}

void SortOrder::update(const QSet<const Document *> &changed)
{
    std::vector<int> moved;
    const auto isChanged = [&](int index) { return changed.contains(m_documents.at(index)); };
    const auto end = std::stable_partition(m_order.begin(), m_order.end(),
                                           [&](int index) { return !isChanged(index); });
    moved.assign(end, m_order.end());
    m_order.erase(end, m_order.end());
    for (const int index : moved) {
        read(std::size_t(index));
    }
    const auto before = [this](int a, int b) { return isBefore(a, b); };
    std::stable_sort(moved.begin(), moved.end(), before);
    constexpr std::size_t few = 16;
    if (moved.size() <= few) {
        for (const int index : moved) {
            m_order.insert(std::upper_bound(m_order.begin(), m_order.end(), index, before), index);
        }
    } else {
        const auto middle = std::ptrdiff_t(m_order.size());
        m_order.insert(m_order.end(), moved.begin(), moved.end());
        std::inplace_merge(m_order.begin(), m_order.begin() + middle, m_order.end(), before);
    }
}

QList<Document *> SortOrder::result() const
{
    QList<Document *> result;
    result.reserve(m_documents.size());
    for (const int index : m_order) {
        result.append(m_documents.at(index));
    }
    return result;
}

void SortOrder::read(std::size_t index)
{
    const Document *document = m_documents.at(int(index));
    m_ids[index] = document->id();
    for (const auto &column : m_columns) {
        column->read(index, document);
    }
}

bool SortOrder::isBefore(int a, int b) const
{
    const auto first = std::size_t(a);
    const auto second = std::size_t(b);
    for (const auto &column : m_columns) {
        if (const int result = column->compare(first, second)) {
            return result < 0;
        }
    }
    return m_ids[first] < m_ids[second];
}

} // namespace vo::data
