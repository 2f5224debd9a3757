// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/documentpropertybase.h>

#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

namespace vo::data {

bool DocumentPropertyBase::canDelete() const
{
    return d_()->accessLevel() == Document::WriteAccess;
}

// The handler goes first: nothing may be left to do when a slot has destroyed the document.

bool DocumentPropertyBase::attach(Document *target)
{
    if (auto *linked = qobject_cast<LinkedDocument *>(target)) {
        linked->addDeleteHandler(this, d_());
    }
    const QPointer<Document> document(d_());
    document->attachDocument(target);
    return !document.isNull();
}

bool DocumentPropertyBase::detach(Document *target)
{
    if (auto *linked = qobject_cast<LinkedDocument *>(target)) {
        linked->removeDeleteHandler(this);
    }
    const QPointer<Document> document(d_());
    document->detachDocument(target);
    return !document.isNull();
}

} // namespace vo::data
