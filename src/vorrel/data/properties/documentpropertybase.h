// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/ideletehandler.h>
#include <vorrel/data/properties/propertybase.h>

#include <QtCore/QList>

namespace vo::data {

/// A stored field that points at documents or holds them. It attaches its targets to its document
/// and detaches them, and watches their deletion.
class VORREL_DATACORE_EXPORT DocumentPropertyBase : public PropertyBase, public IDeleteHandler
{
public:
    using PropertyBase::PropertyBase;

    /// Drops all targets, as an edit.
    virtual void clear() = 0;

    /// The type string of the class of the targets.
    [[nodiscard]] virtual QString documentType() const = 0;

    /// Whether all targets have been built.
    [[nodiscard]] virtual bool isComplete() const = 0;
    [[nodiscard]] virtual QList<Document *> referencedDocuments() const = 0;

    /// A target may go if this property may be changed.
    [[nodiscard]] bool canDelete() const override;

protected:
    /// Points at \p target from now on: the document knows of it, and removeDocument() is called
    /// when it is deleted. Slots may destroy the document and this property with it: false says
    /// that they did.
    [[nodiscard]] bool attach(Document *target);
    [[nodiscard]] bool detach(Document *target);
};

} // namespace vo::data
