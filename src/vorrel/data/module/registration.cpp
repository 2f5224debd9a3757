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
#include <vorrel/data/documents/country.h>
#include <vorrel/data/documents/customer.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/fontasset.h>
#include <vorrel/data/documents/genericdata.h>
#include <vorrel/data/documents/htmlasset.h>
#include <vorrel/data/documents/imageasset.h>
#include <vorrel/data/documents/imageeffectparameters.h>
#include <vorrel/data/documents/jsonasset.h>
#include <vorrel/data/documents/keyvaluestore.h>
#include <vorrel/data/documents/language.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/documents/mediaassetcustomfolder.h>
#include <vorrel/data/documents/mediaassetpresetfolder.h>
#include <vorrel/data/documents/mediaassetrootfolder.h>
#include <vorrel/data/documents/pdfasset.h>
#include <vorrel/data/documents/price.h>
#include <vorrel/data/documents/product.h>
#include <vorrel/data/documents/productgroup.h>
#include <vorrel/data/documents/producttag.h>
#include <vorrel/data/documents/qmlasset.h>
#include <vorrel/data/documents/scriptasset.h>
#include <vorrel/data/documents/stylesheetasset.h>
#include <vorrel/data/documents/tag.h>
#include <vorrel/data/documents/taggroup.h>
#include <vorrel/data/documents/uiimageasset.h>
#include <vorrel/data/documents/videoasset.h>
#include <vorrel/data/models/filters/filtercriterion.h>
#include <vorrel/data/models/sorters/sortcriterion.h>
#include <vorrel/data/module/texts_p.h>
#include <vorrel/data/properties/attachment.h>
#include <vorrel/data/properties/langstring.h>
#include <vorrel/data/schema/schema.h>
#include <vorrel/data/schema/schemabooleanvariable.h>
#include <vorrel/data/schema/schemacolorvariable.h>
#include <vorrel/data/schema/schemadata.h>
#include <vorrel/data/schema/schemadatevariable.h>
#include <vorrel/data/schema/schemadocumentlinkvariable.h>
#include <vorrel/data/schema/schemaenumerationvariable.h>
#include <vorrel/data/schema/schemaintegervariable.h>
#include <vorrel/data/schema/schemamedialinkvariable.h>
#include <vorrel/data/schema/schemaproductlinkvariable.h>
#include <vorrel/data/schema/schemarealvariable.h>
#include <vorrel/data/schema/schemastringvariable.h>
#include <vorrel/data/schema/schematimevariable.h>
#include <vorrel/data/schema/schemaurlvariable.h>
#include <vorrel/data/schema/schemavaluestore.h>

#include <QtCore/QAbstractItemModel>
#include <QtQml/qqml.h>

#include <mutex>

namespace vo::data {

namespace {

// A line for each class. The order decides between classes of one type string: the last one wins.
void registerDocuments(TypeRegistry &registry)
{
    registry.addLinked<Tag>();
    registry.addInline<LangString>();
    registry.addLinked<FontAsset>();
    registry.addLinked<HtmlAsset>();
    registry.addLinked<ImageAsset>();
    registry.addLinked<JsonAsset>();
    registry.addLinked<QmlAsset>();
    registry.addLinked<ScriptAsset>();
    registry.addLinked<StyleSheetAsset>();
    registry.addLinked<UiImageAsset>();
    registry.addLinked<VideoAsset>();
    registry.addLinked<PdfAsset>();
    registry.addLinked<MediaAssetCustomFolder>();
    registry.addLinked<MediaAssetPresetFolder>();
    registry.addLinked<MediaAssetRootFolder>();
    registry.addLinked<KeyValueStore>();
    registry.addInline<ImageEffectParameters>();
    registry.addLinked<Language>();
    registry.addLinked<Country>();
    registry.addLinked<Location>();
    registry.addLinked<Product>();
    registry.addLinked<ProductGroup>();
    registry.addLinked<ProductTag>();
    registry.addLinked<ColorPalette>();
    registry.addInline<ColorSwatch>();
    registry.addInline<SchemaBooleanVariable>();
    registry.addInline<SchemaColorVariable>();
    registry.addInline<SchemaDateVariable>();
    registry.addInline<SchemaIntegerVariable>();
    registry.addInline<SchemaRealVariable>();
    registry.addInline<SchemaStringVariable>();
    registry.addInline<SchemaEnumerationEntry>();
    registry.addInline<SchemaEnumerationVariable>();
    registry.addInline<SchemaDocumentLinkVariable>();
    registry.addInline<SchemaProductLinkVariable>();
    registry.addInline<SchemaMediaLinkVariable>();
    registry.addInline<SchemaUrlVariable>();
    registry.addInline<SchemaTimeVariable>();
    registry.addLinked<Schema>();
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
            vo::data::LinkedDocument, vo::data::Group, vo::data::MediaAsset,
            vo::data::MediaAssetFolder, vo::data::ColorSwatch, vo::data::Attachment,
            vo::data::FilterCriterion, vo::data::SortCriterion, vo::data::DataField,
            vo::data::CustomData, vo::data::SchemaVariable, vo::data::SchemaEnumerationEntry,
            vo::data::SchemaValueStore, vo::data::SchemaData, QAbstractItemModel>();
    });
}
