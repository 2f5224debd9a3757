// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace vo::data {

/// The values of a DataListModel, by the id of a row and the name of a field: what was
/// read from the document, and what is to be written to it. Ids and names are numbers here, which
/// are found and moved faster than texts.
class RowValues
{
public:
    /// The row and the name of a value that is to be written.
    using Edit = std::pair<int, int>;

    /// The number of an id; it gets one if it has none.
    int addId(const QString &id)
    {
        const auto known = m_numbers.constFind(id);
        if (known != m_numbers.constEnd()) {
            return *known;
        }
        const int number = int(m_ids.size());
        m_numbers.insert(id, number);
        m_ids.push_back(id);
        m_values.emplace_back();
        return number;
    }

    /// -1 if it has none.
    [[nodiscard]] int findId(const QString &id) const { return m_numbers.value(id, -1); }
    [[nodiscard]] const QString &id(int number) const { return m_ids[std::size_t(number)]; }
    [[nodiscard]] int idCount() const { return int(m_ids.size()); }

    /// The number of a name, likewise.
    int addName(const QString &name)
    {
        const auto known = std::find(m_names.begin(), m_names.end(), name);
        const int number = int(known - m_names.begin());
        if (known == m_names.end()) {
            m_names.push_back(name);
        }
        return number;
    }

    /// Null if nothing is known.
    [[nodiscard]] const QVariant *find(int id, int name) const
    {
        const Values &values = m_values[std::size_t(id)];
        const bool isKnown = std::size_t(name) < values.size() && values[std::size_t(name)];
        return isKnown ? &*values[std::size_t(name)] : nullptr;
    }

    void set(int id, int name, const QVariant &value)
    {
        Values &values = m_values[std::size_t(id)];
        if (values.size() <= std::size_t(name)) {
            values.resize(m_names.size());
        }
        values[std::size_t(name)] = value;
    }

    [[nodiscard]] const QString &name(int number) const { return m_names[std::size_t(number)]; }

    [[nodiscard]] bool isEdited(int id, int name) const { return edits.count({ id, name }) > 0; }

    void drop(int id, int name)
    {
        Values &values = m_values[std::size_t(id)];
        if (std::size_t(name) < values.size()) {
            values[std::size_t(name)].reset();
        }
    }

    /// What is to be written to an item is not, though it is still read.
    void dropEdits(int id)
    {
        edits.erase(edits.lower_bound({ id, 0 }), edits.lower_bound({ id + 1, 0 }));
    }

    /// Forgets what was read of an item.
    void dropRead(int id)
    {
        for (int name = 0; name < int(m_names.size()); ++name) {
            if (!isEdited(id, name)) {
                drop(id, name);
            }
        }
    }

    /// Forgets the values and edits of a name.
    void dropName(int name)
    {
        for (int id = 0; id < idCount(); ++id) {
            edits.erase({ id, name });
            drop(id, name);
        }
    }

    /// Forgets all values and edits. Numbers stay.
    void dropAll()
    {
        edits.clear();
        for (Values &values : m_values) {
            values.clear();
        }
    }

    /// In the order of their numbers.
    std::set<Edit> edits;

    /// Forgets all, also the numbers.
    void clear()
    {
        const int next = m_generation + 1;
        *this = RowValues();
        m_generation = next;
    }

    /// Another one after each clear().
    [[nodiscard]] int generation() const { return m_generation; }

private:
    using Values = std::vector<std::optional<QVariant>>; // by name

    QHash<QString, int> m_numbers;
    std::vector<QString> m_ids;
    std::vector<Values> m_values;
    std::vector<QString> m_names; // few
    int m_generation = 0;
};

} // namespace vo::data
