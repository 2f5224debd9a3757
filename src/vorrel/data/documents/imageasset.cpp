// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/imageasset.h>

#include <vorrel/data/properties/property.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QPointer>
#include <QtGui/QImageReader>

namespace vo::data {

struct ImageAsset::Private
{
    ImageAsset *const q;
    Property<QSize> size { "size", q };
};

ImageAsset::ImageAsset(Context *context)
    : MediaAsset(context)
    , d(new Private { this })
{ }

ImageAsset::~ImageAsset() = default;

VO_DEFINE_READONLY_PROPERTY(ImageAsset, QSize, size)

void ImageAsset::setFile(const QByteArray &hash, const QByteArray &mimeType)
{
    const QSize size = QImageReader(AttachmentStore::find(hash).toLocalFile()).size();
    const QPointer<ImageAsset> self(this);
    if (size.isValid()) {
        d->size.set(size);
    }
    if (self) {
        MediaAsset::setFile(hash, mimeType);
    }
}

} // namespace vo::data

#include "moc_imageasset.cpp"
