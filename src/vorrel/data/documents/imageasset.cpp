// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/imageasset.h>

#include <vorrel/data/documents/derivedimages_p.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/inlinedocumentproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QPointer>

namespace vo::data {

struct ImageAsset::Private
{
    ImageAsset *const q;
    Property<QSize> size { "size", q };
    AttachmentProperty thumbnail { "thumbnail", Attachment::PreviewUse, q };
    Property<QSize> thumbnailSize { "thumbnailSize", q };
    AttachmentProperty webOptimized { "webOptimized", q };
    Property<QSize> webOptimizedSize { "webOptimizedSize", q };
    Property<QJsonObject> metaData { "metaData", q };
    Property<QColor> proxyColor { "proxyColor", q };
    InlineDocumentProperty<ImageEffectParameters> effects { "imageEffectParameters", q };
    bool valid = false;
};

ImageAsset::ImageAsset(Context *context)
    : MediaAsset(context)
    , d(new Private { this })
{ }

ImageAsset::~ImageAsset() = default;

VO_DEFINE_READONLY_PROPERTY(ImageAsset, QSize, size)
VO_DEFINE_READONLY_PROPERTY(ImageAsset, QUrl, thumbnail)
VO_DEFINE_READONLY_PROPERTY(ImageAsset, QSize, thumbnailSize)
VO_DEFINE_READONLY_PROPERTY(ImageAsset, QUrl, webOptimized)
VO_DEFINE_READONLY_PROPERTY(ImageAsset, QSize, webOptimizedSize)
VO_DEFINE_PROPERTY(ImageAsset, QJsonObject, metaData, setMetaData)

// Without a colour of its own, or without access to it, the image has one by its id.
QColor ImageAsset::proxyColor() const
{
    const QColor color = d->proxyColor.get();
    return color.isValid() && color != QColor(Qt::black) ? color : proxyColorOf(id());
}

// Most images have none: they are made when somebody wants to see or edit them.
ImageEffectParameters *ImageAsset::imageEffectParameters() const
{
    return d->effects.getOrCreate();
}

bool ImageAsset::isValid() const
{
    return d->valid && !file().isEmpty();
}

int ImageAsset::decodedLimit()
{
    return decodedImageLimit();
}

void ImageAsset::setDecodedLimit(int mebibytes)
{
    setDecodedImageLimit(mebibytes);
}

void ImageAsset::setFile(const QByteArray &hash, const QByteArray &mimeType)
{
    const QString path = AttachmentStore::find(hash).toLocalFile();
    setFile(hash, mimeType, DerivedImages::make(path, suffix().toLower()));
}

void ImageAsset::setFile(const QByteArray &hash, const QByteArray &mimeType,
                         const DerivedImages &images)
{
    // Each step is an edit, whose slots may destroy this object.
    const QPointer<ImageAsset> self(this);
    const auto assign = [&](const DerivedImage &derived, auto Private::*attachment,
                            auto Private::*size) {
        const bool isSource = derived.state == DerivedImage::SourceWillDo;
        if (!self || derived.state == DerivedImage::Failed) {
            return;
        }
        (*d.*attachment)
            .set(isSource ? hash : derived.hash, isSource ? mimeType : derived.mimeType);
        if (self) {
            (*d.*size).set(isSource ? images.size : derived.size);
        }
    };
    d->valid = !images.size.isEmpty();
    if (d->valid) {
        d->size.set(images.size);
        assign(images.thumbnail, &Private::thumbnail, &Private::thumbnailSize);
        if (self && images.thumbnail.meanColor.isValid()) {
            d->proxyColor.set(images.thumbnail.meanColor);
        }
        assign(images.webVersion, &Private::webOptimized, &Private::webOptimizedSize);
    }
    if (self) {
        MediaAsset::setFile(hash, mimeType);
    }
}

} // namespace vo::data

#include "moc_imageasset.cpp"
