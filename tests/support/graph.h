// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMap>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>

namespace vo::test {

/// Documents by their ids, each with what it refers to.
using Graph = QMap<QString, QStringList>;

/// "a:b c|b" says that a refers to b and c, and b to nothing.
[[nodiscard]] Graph operator""_graph(const char *text, size_t size);

/// 0 refers to 1, that to 2, and so on; the last one to \p next.
[[nodiscard]] Graph chain(int length, const QStringList &next = {});

/// Deep, with cycles, and with references to documents between 0 and \p size that do not exist.
[[nodiscard]] Graph randomGraph(QRandomGenerator &random, int size);

/// What is wrong with \p order, in which documents were made because \p wanted were loaded: each
/// one that these lead to has to come once, after those that it refers to and that do not lead
/// back to it. Empty if nothing is.
[[nodiscard]] QByteArray faultOf(Graph graph, const QStringList &wanted, const QStringList &order);

} // namespace vo::test
