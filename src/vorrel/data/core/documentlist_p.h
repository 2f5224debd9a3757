// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/core/documentwatch_p.h>

#include <QtCore/QFlags>
#include <QtCore/QSet>

#include <functional>
#include <vector>

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

    /// The same without a call of changed. False if the rules forbid it.
    bool add(Document *document);

    /// Takes out the first that is \p document, without a call of changed. False if there is none.
    bool removeFirst(const Document *document);

    /// Does nothing if the list is empty.
    void clear() override;

    /// Takes other documents, without a call of changed. False if they are those that the owner
    /// knows of already.
    bool assign(const QList<Document *> &documents);

    /// Whether documents were destroyed that the owner was not told of yet.
    [[nodiscard]] bool hasShrunk() const { return m_shrunk; }

    /// Places side by side that destroyed documents have left. Not those of nulls that were listed.
    struct Gap
    {
        int place = 0;
        int size = 0;
    };

    /// The last gap, if places are kept; of no size if there is none.
    [[nodiscard]] Gap lastGap() const;

    /// Lets what stands behind \p gap move up, without a call of changed.
    void closeGap(Gap gap);

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
    mutable std::vector<int> m_gaps; // places, in order
    mutable QSet<const Document *> m_index;
    mutable bool m_indexed = false;
    mutable bool m_stale = false;
};

} // namespace vo::data
