// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

#include <utility>
#include <vector>

namespace vo::data {

class DocumentPropertyBase;

struct Document::Private
{
    // In the order of construction. The property objects belong to the concrete class and are
    // gone before this record is.
    std::vector<PropertyBase *> properties;
    std::vector<const DocumentPropertyBase *>
        documentProperties;     // those of them; what walks follow
    QList<Document *> attached; // the same document once for each link
    QSet<Document *> referencing;
    std::unique_ptr<std::vector<std::function<void()>>> postRoutines;
    bool wasCached = false;
    bool locked = false; // a flag against notification, not a counter
    bool useLocale = false;
    mutable bool complete = false; // a latch: never cleared
    mutable quint64 lastWalk = 0;  // that came by; see enter()

    /// The number of a new walk along links. Main thread only.
    static quint64 newWalk()
    {
        static quint64 last = 0;
        return ++last;
    }

    /// Whether \a walk comes by for the first time. Noted in the documents, since a set of all that
    /// a walk has seen costs more than the walk. Another walk in a slot of this one makes this one
    /// come by again, which does no harm.
    [[nodiscard]] bool enter(quint64 walk) const { return std::exchange(lastWalk, walk) != walk; }
};

} // namespace vo::data
