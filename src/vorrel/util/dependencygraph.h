// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>

#include <deque>
#include <numeric>
#include <utility>
#include <vector>

namespace vo::util {

/// A throw-away graph of things that need each other, which puts them into an order where needed
/// ones come first. Linear in nodes and edges. Things on a circle, and those that need them, come
/// last, so that a circle never blocks.
///
/// A value type for the stack of one computation; \a T is anything with a qHash().
template <typename T>
class DependencyGraph
{
public:
    struct Node
    {
        T key;
        std::size_t index; // in the order of their making
    };

    DependencyGraph() = default;
    Q_DISABLE_COPY_MOVE(DependencyGraph)

    /// The node of \p key, made if there is none. It lives as long as the graph.
    const Node *addNode(const T &key)
    {
        const Node *&node = m_index[key];
        if (!node) {
            m_nodes.push_back(Node { key, m_nodes.size() });
            node = &m_nodes.back();
        }
        return node;
    }

    /// Says that \p from needs \p to. A second time changes nothing.
    void addDependency(const T &from, const T &to)
    {
        m_edges.emplace_back(addNode(from)->index, addNode(to)->index);
    }

    /// All keys, needed ones before those that need them.
    [[nodiscard]] QList<T> order() const
    {
        const NeededBy neededBy = sortedEdges();
        std::vector<std::size_t> missing(m_nodes.size());
        for (const std::size_t needing : neededBy.needing) {
            ++missing[needing];
        }
        std::vector<std::size_t> ready; // all that ever were
        for (std::size_t node = 0; node < m_nodes.size(); ++node) {
            if (missing[node] == 0) {
                ready.push_back(node);
            }
        }
        for (std::size_t next = 0; next < ready.size(); ++next) {
            const std::size_t node = ready[next];
            for (auto at = neededBy.start[node]; at < neededBy.start[node + 1]; ++at) {
                if (--missing[neededBy.needing[at]] == 0) {
                    ready.push_back(neededBy.needing[at]);
                }
            }
        }
        QList<T> result;
        for (const std::size_t node : ready) {
            result.append(m_nodes[node].key);
        }
        for (const Node &node : m_nodes) {
            if (missing[node.index] > 0) {
                result.append(node.key);
            }
        }
        return result;
    }

private:
    /// The edges by the node that is needed: those of node n begin at start[n]. Each is there once.
    struct NeededBy
    {
        std::vector<std::size_t> start;
        std::vector<std::size_t> needing;
    };

    NeededBy sortedEdges() const
    {
        const std::size_t size = m_nodes.size();
        std::vector<std::size_t> place(size + 1); // first the counts, then where the next one goes
        for (const auto &edge : m_edges) {
            ++place[edge.second + 1];
        }
        std::partial_sum(place.begin(), place.end(), place.begin());
        const std::vector<std::size_t> start = place;
        std::vector<std::size_t> all(m_edges.size());
        for (const auto &edge : m_edges) {
            all[place[edge.second]++] = edge.first;
        }
        NeededBy result;
        std::vector<std::size_t> lastSeen(size, size); // with which needed node
        for (std::size_t needed = 0; needed < size; ++needed) {
            result.start.push_back(result.needing.size());
            for (auto at = start[needed]; at < start[needed + 1]; ++at) {
                if (std::exchange(lastSeen[all[at]], needed) != needed) {
                    result.needing.push_back(all[at]);
                }
            }
        }
        result.start.push_back(result.needing.size());
        return result;
    }

    std::deque<Node> m_nodes; // they stay where they are
    QHash<T, const Node *> m_index;
    std::vector<std::pair<std::size_t, std::size_t>> m_edges; // from, to
};

} // namespace vo::util
