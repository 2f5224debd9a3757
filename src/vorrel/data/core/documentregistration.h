// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/core/linkeddocument.h>

#include <functional>
#include <type_traits>

namespace vo::data {

/// Where registerDocument() ends.
class VORREL_DATACORE_EXPORT DocumentRegistration
{
public:
    static void addLinked(const QMetaObject &metaObject,
                          const std::function<LinkedDocument *(Context *)> &creator);
    static void addInline(const QMetaObject &metaObject,
                          const std::function<InlineDocument *(Document *)> &creator);

    DocumentRegistration() = delete;
};

/// Makes the document class \a T of an application known, so that documents of its type string
/// become objects of it. Call it for each class at the start of the program, before the first
/// Context is made; a linked class is constructed from its Context, an inline class from its parent
/// document.
///
/// A class without a type string cannot be registered, and of two classes with one type string the
/// later one is used: both are logged as warnings.
template <typename T>
void registerDocument()
{
    // Qt 5 cannot read a property of a pointer type that nobody registered.
    qRegisterMetaType<T *>();
    if constexpr (std::is_base_of_v<LinkedDocument, T>) {
        DocumentRegistration::addLinked(T::staticMetaObject,
                                        [](Context *context) { return new T(context); });
    } else {
        static_assert(std::is_base_of_v<InlineDocument, T>,
                      "a document class derives from LinkedDocument or InlineDocument");
        DocumentRegistration::addInline(T::staticMetaObject,
                                        [](Document *parent) { return new T(parent); });
    }
}

} // namespace vo::data
