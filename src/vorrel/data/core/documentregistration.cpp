// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentregistration.h>

#include <vorrel/data/core/typeregistry_p.h>

namespace vo::data {

void DocumentRegistration::addLinked(const QMetaObject &metaObject,
                                     const std::function<LinkedDocument *(Context *)> &creator)
{
    TypeRegistry::instance().addLinked(metaObject, creator);
}

void DocumentRegistration::addInline(const QMetaObject &metaObject,
                                     const std::function<InlineDocument *(Document *)> &creator)
{
    TypeRegistry::instance().addInline(metaObject, creator);
}

} // namespace vo::data
