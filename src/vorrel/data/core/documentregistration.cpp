// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentregistration.h>

#include <vorrel/data/core/typeregistry_p.h>

namespace vo::data {

void DocumentRegistration::addLinked(const QMetaObject &metaObject,
                                     std::function<LinkedDocument *(Context *)> creator)
{
    TypeRegistry::instance().addLinked(metaObject, std::move(creator));
}

void DocumentRegistration::addInline(const QMetaObject &metaObject,
                                     std::function<InlineDocument *(Document *)> creator)
{
    TypeRegistry::instance().addInline(metaObject, std::move(creator));
}

} // namespace vo::data
