// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>

#include <deque>
#include <memory>
#include <unordered_set>
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
        std::vector<Node *> neededBy; // once each
        std::unordered_set<const Node *> needs;
    };

    DependencyGraph() = default;
    Q_DISABLE_COPY_MOVE(DependencyGraph)

    /// The node of \p key, made if there is none. It lives as long as the graph.
    Node *addNode(const T &key)
    {
        Node *&node = m_index[key];
        if (!node) {
            m_nodes.push_back(Node { key, {}, {} });
            node = &m_nodes.back();
        }
        return node;
    }

    /// Says that \p from needs \p to. A second time changes nothing.
    void addDependency(const T &from, const T &to)
    {
        Node *needing = addNode(from);
        Node *needed = addNode(to);
        if (needing->needs.insert(needed).second) {
            needed->neededBy.push_back(needing);
        }
    }

    /// All keys, needed ones before those that need them.
    [[nodiscard]] QList<T> order() const
    {
        QHash<const Node *, std::size_t> missing;
        std::deque<const Node *> ready;
        for (const Node &node : m_nodes) {
            if (node.needs.empty()) {
                ready.push_back(&node);
            } else {
                missing.insert(&node, node.needs.size());
            }
        }
        QList<T> result;
        while (!ready.empty()) {
            const Node *node = ready.front();
            ready.pop_front();
            result.append(node->key);
            for (const Node *needing : node->neededBy) {
                if (--missing[needing] == 0) {
                    missing.remove(needing);
                    ready.push_back(needing);
                }
            }
        }
        for (const Node &node : m_nodes) {
            if (missing.contains(&node)) {
                result.append(node.key);
            }
        }
        return result;
    }

private:
    std::deque<Node> m_nodes; // in the order of their making; they stay where they are
    QHash<T, Node *> m_index;
};

} // namespace vo::util
