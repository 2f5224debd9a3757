// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

namespace vo::data {

class Document;

/// Something that points at a document and has a say when that document is deleted: a
/// document-valued property. A LinkedDocument knows its handlers and owns none of them.
class VORREL_DATACORE_EXPORT IDeleteHandler
{
public:
    virtual ~IDeleteHandler() = default;

    /// \p document has been deleted: stop pointing at it.
    virtual void removeDocument(Document *document) = 0;

    /// False forbids the deletion.
    [[nodiscard]] virtual bool canDelete() const = 0;
};

} // namespace vo::data
