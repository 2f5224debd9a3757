// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

namespace vo::data {

/// What all templates for properties of documents have in common: the targets are of class \a T,
/// and \a Base does everything else for its Target, which is LinkedDocument or InlineDocument.
template <typename T, typename Base>
class TypedDocumentProperty : public Base
{
public:
    using Base::Base;

    [[nodiscard]] QString documentType() const override
    {
        return Document::typeOf(T::staticMetaObject);
    }

protected:
    [[nodiscard]] bool accepts(const typename Base::Target *document) const override
    {
        return qobject_cast<const T *>(document) != nullptr;
    }
};

} // namespace vo::data
