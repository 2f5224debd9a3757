// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/sortcriterion.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSet>

#include <memory>
#include <vector>

namespace vo::data {

/// The order of documents by some compare functions, and by their ids where these say nothing. It
/// reads each document once, and keeps what it has read, so that a few that have changed find
/// their new places without a sort of all.
class SortOrder
{
public:
    SortOrder();
    ~SortOrder();

    void sort(const QList<Document *> &documents, const std::vector<CompareFunction> &functions);

    /// Sorts the same documents again by the same functions. Only \p changed are read.
    void update(const QSet<const Document *> &changed);

    /// What was sorted, as it came. Some may have been destroyed since then.
    [[nodiscard]] const QList<Document *> &documents() const { return m_documents; }

    /// The same, sorted.
    [[nodiscard]] QList<Document *> result() const;

    /// What one compare function knows of the documents.
    class Column;

private:
    void read(std::size_t index);
    [[nodiscard]] bool isBefore(int a, int b) const;

    QList<Document *> m_documents;
    std::vector<QByteArray> m_ids;
    std::vector<std::unique_ptr<Column>> m_columns;
    std::vector<int> m_order; // places in m_documents
};

} // namespace vo::data
