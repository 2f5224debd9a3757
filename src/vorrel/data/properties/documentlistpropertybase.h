// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/documentpropertybase.h>

namespace vo::data {

/// A stored field that holds an ordered list of documents. Edits give false where they are
/// refused: below WriteAccess, for a wrong class, for a link that would close a cycle.
class VORREL_DATACORE_EXPORT DocumentListPropertyBase : public DocumentPropertyBase
{
public:
    using DocumentPropertyBase::DocumentPropertyBase;

    [[nodiscard]] int type() const override { return DocumentList; }

    /// Null out of range.
    [[nodiscard]] virtual Document *at(int index) const = 0;

    /// -1 if absent.
    [[nodiscard]] virtual int indexOf(Document *document) const = 0;

    /// A negative \p index appends; an element that is there already moves.
    virtual bool insert(Document *document, int index) = 0;
    virtual bool remove(Document *document) = 0;
    virtual bool move(int from, int to) = 0;
};

} // namespace vo::data
