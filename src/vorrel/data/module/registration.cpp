// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/module/registration.h>

#include <vorrel/data/changefeed/continuouschangefeedmonitor.h>
#include <vorrel/data/changefeed/longpollingchangefeedmonitor.h>
#include <vorrel/data/changefeed/nullchangefeedmonitor.h>
#include <vorrel/data/changefeed/pollingchangefeedmonitor.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/context/downloadstatus.h>
#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/custom/customdata.h>
#include <vorrel/data/custom/datafield.h>
#include <vorrel/data/documents/colorpalette.h>
#include <vorrel/data/documents/colorswatch.h>
#include <vorrel/data/documents/customer.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/genericdata.h>
#include <vorrel/data/documents/imageasset.h>
#include <vorrel/data/documents/keyvaluestore.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/documents/price.h>
#include <vorrel/data/documents/product.h>
#include <vorrel/data/documents/productgroup.h>
#include <vorrel/data/documents/producttag.h>
#include <vorrel/data/documents/tag.h>
#include <vorrel/data/documents/taggroup.h>
#include <vorrel/data/models/filters/filtercriterion.h>
#include <vorrel/data/module/texts_p.h>
#include <vorrel/data/properties/attachment.h>
#include <vorrel/data/properties/langstring.h>

#include <QtCore/QAbstractItemModel>
#include <QtQml/qqml.h>

#include <mutex>

namespace vo::data {

namespace {

// A line for each class. The order decides between classes of one type string: the last one wins.
void registerDocuments(TypeRegistry &registry)
{
    registry.addLinked<Asset>();
    registry.addLinked<ImageAsset>();
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

template <typename Monitor>
void registerMonitor(Context::ChangeFeedMonitorType type)
{
    ChangeFeedMonitor::registerType(
        type, [](const QString &database, Context *context) -> ChangeFeedMonitor * {
            return new Monitor(database, context);
        });
}

void registerMonitors()
{
    registerMonitor<NullChangeFeedMonitor>(Context::NullMonitor);
    registerMonitor<ContinuousChangeFeedMonitor>(Context::ContinuousMonitor);
    registerMonitor<PollingChangeFeedMonitor>(Context::PollingMonitor);
    registerMonitor<LongPollingChangeFeedMonitor>(Context::LongPollingMonitor);
}

// Qt 5 reads properties that hold objects, or lists of them, only if the types are known. They are
// known without names here: the names come with the import of "vorrel.data.Core", which Qt refuses
// as soon as one of them is taken.
template <typename... Types>
void registerPropertyTypes()
{
    (qmlRegisterAnonymousType<Types>("vorrel.data", 1), ...);
}

} // namespace

} // namespace vo::data

void _vo_data_registerTypesdata_core()
{
    static std::once_flag once;
    std::call_once(once, [] {
        vo::data::registerDocuments(vo::data::TypeRegistry::instance());
        vo::data::registerMonitors();
        vo::data::Texts::install();
        vo::data::registerPropertyTypes<
            vo::data::Context, vo::data::ContextError, vo::data::DownloadStatus, vo::data::Document,
            vo::data::LinkedDocument, vo::data::Group, vo::data::ColorSwatch, vo::data::Attachment,
            vo::data::FilterCriterion, vo::data::DataField, vo::data::CustomData,
            QAbstractItemModel>();
    });
}
