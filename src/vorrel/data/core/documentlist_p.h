// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/core/documentwatch_p.h>

#include <QtCore/QFlags>
#include <QtCore/QSet>

#include <functional>

namespace vo::data {

/// Documents that somebody lists but does not own. A document that is destroyed leaves at once,
/// wherever it stands; the owner is told of it in a later turn of the event loop.
class DocumentList final : public EditableObjectList<Document>, private DocumentWatch
{
public:
    enum Rule {
        NoRule = 0,
        NoNulls = 1,
        NoDuplicates = 2,
        KeepPlaces = 4, ///< a document that is destroyed leaves a null behind
    };
    Q_DECLARE_FLAGS(Rules, Rule)

    /// \p changed is called after append(), after clear(), and when documents were destroyed. It
    /// may end in the destruction of \p owner and this list. Without an owner it is not needed.
    explicit DocumentList(QObject *owner = nullptr, std::function<void()> changed = {},
                          Rules rules = NoRule);

    [[nodiscard]] const QList<Document *> &objects() const override;

    /// Takes the same time for any length, on average. Only the address of \p document is used.
    [[nodiscard]] bool contains(const Document *document) const;

    /// Does nothing if the rules forbid it.
    void append(Document *document) override;

    /// Does nothing if the list is empty.
    void clear() override;

    /// Takes other documents, without a call of changed. False if they are those that the owner
    /// knows of already.
    bool assign(const QList<Document *> &documents);

    /// Whether documents were destroyed that the owner was not told of yet.
    [[nodiscard]] bool hasShrunk() const { return m_shrunk; }

private:
    void documentDestroyed(const Document *document) override;
    void tell();
    void prune() const;
    [[nodiscard]] QSet<const Document *> &index() const;

    QObject *const m_owner;
    const std::function<void()> m_changed;
    const Rules m_rules;
    bool m_shrunk = false;
    bool m_tellScheduled = false;
    // Who only reads the list does not pay for an index. What was destroyed is missing in it, and
    // leaves the list itself when that is read next: one by one, the end of a Context would take
    // time with the square of its size.
    mutable QList<Document *> m_documents;
    mutable QSet<const Document *> m_index;
    mutable bool m_indexed = false;
    mutable bool m_stale = false;
};

} // namespace vo::data
