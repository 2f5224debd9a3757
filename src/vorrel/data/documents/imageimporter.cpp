// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/imageimporter.h>

#include <vorrel/data/context/context.h>
#include <vorrel/data/documents/derivedimages_p.h>
#include <vorrel/data/documents/imageasset.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>

namespace vo::data {

namespace {

/// What a thread makes of a file.
struct PreparedFile
{
    explicit PreparedFile(const QUrl &file)
        : url(file)
        , name(QFileInfo(file.toLocalFile()).fileName())
        , hash(AttachmentProperty::store(file))
    {
        if (!hash.isEmpty()) {
            mimeType = MimeMap::mimeTypeForFile(file.toLocalFile());
            images = DerivedImages::make(AttachmentStore::find(hash).toLocalFile(),
                                         QFileInfo(name).suffix().toLower());
        }
    }

    QUrl url;
    QString name;
    QByteArray hash; // empty if there is no such file
    QByteArray mimeType;
    DerivedImages images;
};

} // namespace

struct ImageImporter::Private
{
    explicit Private(ImageImporter *importer)
        : q(importer)
    { }

    ImageImporter *const q;
    QPointer<Context> context;
    QPointer<MediaAssetFolder> folder;
    int total = 0;
    int done = 0;
    int run = 0;      // those that were cancelled have lower numbers
    QThreadPool pool; // the last member: its threads use the others

    ImageAsset *makeDocument(const PreparedFile &file);
    void finish(const PreparedFile &file);
};

ImageImporter::ImageImporter(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{ }

ImageImporter::~ImageImporter()
{
    d->pool.clear();
    d->pool.waitForDone();
}

Context *ImageImporter::context() const
{
    return d->context;
}

void ImageImporter::setContext(Context *context)
{
    if (context != d->context) {
        d->context = context;
        Q_EMIT contextChanged();
    }
}

MediaAssetFolder *ImageImporter::folder() const
{
    return d->folder;
}

void ImageImporter::setFolder(MediaAssetFolder *folder)
{
    if (folder != d->folder) {
        d->folder = folder;
        Q_EMIT folderChanged();
    }
}

bool ImageImporter::isRunning() const
{
    return d->done < d->total;
}

int ImageImporter::total() const
{
    return d->total;
}

int ImageImporter::done() const
{
    return d->done;
}

double ImageImporter::progress() const
{
    return d->total > 0 ? double(d->done) / d->total : 0;
}

void ImageImporter::add(const QList<QUrl> &files)
{
    if (files.isEmpty()) {
        return;
    }
    const bool wasRunning = isRunning();
    if (!wasRunning) {
        d->total = 0;
        d->done = 0;
    }
    d->total += int(files.size());
    for (const QUrl &url : files) {
        d->pool.start([this, url, run = d->run] {
            const PreparedFile file(url);
            QMetaObject::invokeMethod(
                this,
                [this, file, run] {
                    if (run == d->run) {
                        d->finish(file);
                    }
                },
                Qt::QueuedConnection);
        });
    }
    const QPointer<ImageImporter> self(this);
    Q_EMIT progressChanged();
    if (self && !wasRunning) {
        Q_EMIT runningChanged();
    }
}

void ImageImporter::cancel()
{
    if (!isRunning()) {
        return;
    }
    d->pool.clear();
    ++d->run;
    d->total = d->done;
    const QPointer<ImageImporter> self(this);
    Q_EMIT progressChanged();
    if (self) {
        Q_EMIT runningChanged();
    }
}

ImageAsset *ImageImporter::Private::makeDocument(const PreparedFile &file)
{
    if (!context || file.hash.isEmpty()) {
        return nullptr;
    }
    const QPointer<ImageAsset> image(qobject_cast<ImageAsset *>(
        context->createDocument(Document::typeOf(ImageAsset::staticMetaObject))));
    // Slots may destroy it after each step, and the folder.
    if (image && folder) {
        image->setParentFolder(folder);
    }
    if (image) {
        image->setFileName(file.name);
    }
    if (image) {
        image->setFile(file.hash, file.mimeType, file.images);
    }
    return image;
}

void ImageImporter::Private::finish(const PreparedFile &file)
{
    const QPointer<ImageImporter> self(q);
    const int presentRun = run;
    ImageAsset *image = makeDocument(file);
    if (!self || run != presentRun) {
        return;
    }
    ++done;
    if (image) {
        Q_EMIT q->imported(file.url, image);
    } else {
        Q_EMIT q->failed(file.url);
    }
    if (self) {
        Q_EMIT q->progressChanged();
    }
    if (self && run == presentRun && done == total) {
        Q_EMIT q->runningChanged();
        if (self) {
            Q_EMIT q->finished();
        }
    }
}

} // namespace vo::data

#include "moc_imageimporter.cpp"
