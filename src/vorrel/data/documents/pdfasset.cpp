// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/pdfasset.h>

#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/property.h>

namespace vo::data {

struct PdfAsset::Private
{
    PdfAsset *const q;
    AttachmentProperty thumbnail { "thumbnail", Attachment::PreviewUse, q };
    Property<int> pageCount { "pageCount", q };
};

PdfAsset::PdfAsset(Context *context)
    : MediaAsset(context)
    , d(new Private { this })
{ }

PdfAsset::~PdfAsset() = default;

VO_DEFINE_PROPERTY(PdfAsset, int, pageCount, setPageCount)

void PdfAsset::setPdf(const QByteArray &hash)
{
    setFile(hash, QByteArrayLiteral("application/pdf"));
}

QUrl PdfAsset::thumbnail() const
{
    return d->thumbnail.get();
}

void PdfAsset::setThumbnail(const QUrl &localFile)
{
    d->thumbnail.set(localFile);
}

} // namespace vo::data

#include "moc_pdfasset.cpp"
