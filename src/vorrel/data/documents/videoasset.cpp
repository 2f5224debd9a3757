// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/videoasset.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/documents/derivedimages_p.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>

namespace vo::data {

struct VideoAsset::Private
{
    VideoAsset *const q;
    AttachmentProperty poster { "poster", q };
    AttachmentProperty thumbnail { "thumbnail", Attachment::PreviewUse, q };
    Property<int> duration { "duration", q };
    Property<QSize> resolution { "resolution", q };
    Property<QSize> thumbnailSize { "thumbnailSize", q };
    Property<bool> hasAudio { "hasAudio", q };
    bool fetching = false;
};

VideoAsset::VideoAsset(Context *context)
    : MediaAsset(context)
    , d(new Private { this })
{
    connect(this, &VideoAsset::fileChanged, this, &VideoAsset::playableFileChanged);
}

VideoAsset::~VideoAsset() = default;

VO_DEFINE_READONLY_PROPERTY(VideoAsset, QUrl, poster)
VO_DEFINE_READONLY_PROPERTY(VideoAsset, QUrl, thumbnail)
VO_DEFINE_PROPERTY(VideoAsset, int, duration, setDuration)
VO_DEFINE_PROPERTY(VideoAsset, QSize, resolution, setResolution)
VO_DEFINE_READONLY_PROPERTY(VideoAsset, QSize, thumbnailSize)
VO_DEFINE_PROPERTY(VideoAsset, bool, hasAudio, setHasAudio)

void VideoAsset::setVideo(const QByteArray &hash)
{
    setFile(hash, QByteArrayLiteral("video/mp4"));
}

QUrl VideoAsset::playableFile() const
{
    const QUrl url = file();
    if (url.isLocalFile()) {
        if (!QFile(url.toLocalFile()).open(QIODevice::ReadOnly)) {
            qCCritical(lcData) << "Failed to open video file" << url.toLocalFile();
        }
        return url;
    }
    if (!url.isEmpty() && !d->fetching) {
        d->fetching = true;
        auto *self = const_cast<VideoAsset *>(this);
        documentStore(context()).fetchAttachment(self, QStringLiteral("file"), [self] {
            self->d->fetching = false;
            Q_EMIT self->playableFileChanged();
        });
    }
    return {};
}

bool VideoAsset::setPoster(const QString &filePath)
{
    const QFileInfo info(filePath);
    if (!info.isFile() || !info.isReadable()) {
        qCCritical(lcData) << "Failed to open file" << filePath;
        return false;
    }
    const QImage image = readImage(filePath);
    const QByteArray hash = image.isNull() || accessLevel() < WriteAccess
        ? QByteArray()
        : AttachmentProperty::store(QUrl::fromLocalFile(filePath));
    if (hash.isEmpty()) {
        return false;
    }
    setPoster(hash, MimeMap::mimeTypeForSuffix(QStringLiteral("jpg")), image,
              info.suffix().toLower());
    return true;
}

bool VideoAsset::setPoster(const QByteArray &hash)
{
    if (accessLevel() < WriteAccess) {
        return false;
    }
    const QImage image = readImage(AttachmentStore::find(hash).toLocalFile());
    setPoster(hash, MimeMap::mimeTypeForSuffix(QStringLiteral("png")), image, {});
    return !image.isNull();
}

void VideoAsset::setPoster(const QByteArray &hash, const QByteArray &mimeType, const QImage &image,
                           const QString &suffix)
{
    const QPointer<VideoAsset> self(this);
    d->poster.set(hash, mimeType);
    if (!self || image.isNull()) {
        return;
    }
    DerivedImage thumbnail = makeThumbnail(image, suffix);
    if (thumbnail.state == DerivedImage::SourceWillDo) {
        thumbnail = { DerivedImage::Stored, hash, mimeType, image.size(), {} };
    }
    if (thumbnail.state == DerivedImage::Stored) {
        d->thumbnail.set(thumbnail.hash, thumbnail.mimeType);
        if (self) {
            d->thumbnailSize.set(thumbnail.size);
        }
    }
}

} // namespace vo::data

#include "moc_videoasset.cpp"
