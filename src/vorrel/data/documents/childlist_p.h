// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/documentwatch_p.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QList>
#include <QtCore/QPointer>

#include <algorithm>
#include <memory>

/// \file
/// Trees of documents: each child stores a link to its parent, and the parent lists its children.

namespace vo::data {

/// The children of class \a T of one document, as far as they have been built, by id. They are
/// gathered when somebody asks, and again after a change: views read a list entry by entry, and it
/// may have thousands.
template <typename T>
class ChildList
{
public:
    /// \p isChild tells which of the documents that refer to \p parent are in the list.
    template <typename IsChild>
    [[nodiscard]] QList<T *> of(const LinkedDocument *parent, IsChild isChild)
    {
        if (!m_cache) {
            m_cache = std::make_unique<Cache>();
        }
        if (!m_cache->isValid) {
            m_cache->children = gather(parent, isChild);
            m_cache->isValid = true;
        }
        return m_cache->children;
    }

    void invalidate()
    {
        if (m_cache) {
            m_cache->isValid = false;
        }
    }

private:
    struct Cache : DocumentWatch
    {
        void documentDestroyed(const Document * /*document*/) override { isValid = false; }

        QList<T *> children;
        bool isValid = false;
    };

    template <typename IsChild>
    static QList<T *> gather(const LinkedDocument *parent, IsChild isChild)
    {
        QList<T *> children;
        const QList<Document *> referencing = parent->referencingDocuments();
        for (Document *document : referencing) {
            auto *child = qobject_cast<T *>(document);
            if (child && !child->deleted() && isChild(child)) {
                children.append(child);
            }
        }
        std::sort(children.begin(), children.end(),
                  [](const T *a, const T *b) { return a->id() < b->id(); });
        return children;
    }

    std::unique_ptr<Cache> m_cache; // only where somebody has asked
};

/// What a child does when it comes to point at a document: if that is a \a Parent, its function
/// \p moved is called now, and whenever the child may enter or leave the list by itself.
template <typename Parent, typename Moved>
void enterParent(Document *child, const QPointer<Document> &target, Moved moved)
{
    if (auto *parent = qobject_cast<Parent *>(target.data())) {
        QObject::connect(child, &Document::deletedChanged, parent, moved, Qt::UniqueConnection);
        QObject::connect(child, &Document::accessLevelChanged, parent, moved, Qt::UniqueConnection);
        if (!child->deleted()) {
            (parent->*moved)();
        }
    }
}

/// The same for one that ceases to point at a document. A deleted one has left the list before.
template <typename Parent, typename Moved>
void leaveParent(Document *child, const QPointer<Document> &target, Moved moved)
{
    if (auto *parent = qobject_cast<Parent *>(target.data())) {
        if (!child->attached().contains(parent)) {
            QObject::disconnect(child, &Document::deletedChanged, parent, moved);
            QObject::disconnect(child, &Document::accessLevelChanged, parent, moved);
        }
        if (!child->deleted()) {
            (parent->*moved)();
        }
    }
}

} // namespace vo::data
