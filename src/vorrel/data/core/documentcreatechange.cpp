// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentcreatechange.h>

#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

DocumentCreateChange::DocumentCreateChange(Document *document)
    : Change(document)
{ }

DocumentCreateChange::~DocumentCreateChange() = default;

void DocumentCreateChange::apply()
{
    if (Document *created = document()) {
        created->setDeleted(false);
    }
}

void DocumentCreateChange::unapply()
{
    Document *created = document();
    if (!created) {
        return;
    }
    if (auto *linked = qobject_cast<LinkedDocument *>(created)) {
        linked->overrideAccessLevel();
    }
    created->setDeleted(true);
}

bool DocumentCreateChange::isValid() const
{
    return document() != nullptr;
}

} // namespace vo::data
