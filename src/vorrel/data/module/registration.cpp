// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/module/registration.h>

#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/documents/colorpalette.h>
#include <vorrel/data/documents/colorswatch.h>
#include <vorrel/data/documents/customer.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/genericdata.h>
#include <vorrel/data/documents/keyvaluestore.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/documents/price.h>
#include <vorrel/data/documents/product.h>
#include <vorrel/data/documents/productgroup.h>
#include <vorrel/data/documents/producttag.h>
#include <vorrel/data/documents/tag.h>
#include <vorrel/data/documents/taggroup.h>
#include <vorrel/data/properties/langstring.h>

#include <mutex>

// Generated from the headers of the QML types.
void qml_register_types_vorrel_data_Core();

namespace vo::data {

namespace {

// A line for each class. The order decides between classes of one type string: the last one wins.
void registerDocuments(TypeRegistry &registry)
{
    registry.addLinked<Tag>();
    registry.addInline<LangString>();
    registry.addLinked<KeyValueStore>();
    registry.addLinked<Location>();
    registry.addLinked<Product>();
    registry.addLinked<ProductGroup>();
    registry.addLinked<ProductTag>();
    registry.addLinked<ColorPalette>();
    registry.addInline<ColorSwatch>();
    registry.addLinked<TagGroup>();
    registry.addLinked<Device>();
    registry.addLinked<Customer>();
    registry.addInline<Price>();
    registry.setFallback<GenericData>();
}

} // namespace

} // namespace vo::data

void _vo_data_registerTypesdata_core()
{
    static std::once_flag once;
    std::call_once(once, [] {
        vo::data::registerDocuments(vo::data::TypeRegistry::instance());
        // Qt 5 knows lists of objects in properties only of registered types.
        qml_register_types_vorrel_data_Core();
    });
}
