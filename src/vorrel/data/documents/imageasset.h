// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/imageeffectparameters.h>
#include <vorrel/data/documents/mediaasset.h>

#include <QtCore/QSize>
#include <QtGui/QColor>

namespace vo::data {

struct DerivedImages;

/// An image. When its file is set, a thumbnail, a version for the web and a colour that stands for
/// it until it is there are made of it:
///
///     Rectangle {
///         color: image.proxyColor
///         AttachmentLoader { id: thumbnail; document: image; property: "thumbnail" }
///         Image { anchors.fill: parent; source: thumbnail.url }
///     }
///
/// All sizes are in pixels, of images that stand upright: an image whose file says that it is to
/// be turned has been turned in its thumbnail and web version. Show \c file itself with the
/// autoTransform of Image.
class VORREL_DATACORE_EXPORT ImageAsset : public vo::data::MediaAsset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "image")
    VO_READONLY_PROPERTY(QSize, size)
    VO_READONLY_PROPERTY(QUrl, thumbnail)
    VO_READONLY_PROPERTY(QSize, thumbnailSize)
    VO_READONLY_PROPERTY(QUrl, webOptimized)
    VO_READONLY_PROPERTY(QSize, webOptimizedSize)
    VO_PROPERTY(QJsonObject, metaData, setMetaData)
    VO_READONLY_PROPERTY(QColor, proxyColor)
    VO_READONLY_PROPERTY(vo::data::ImageEffectParameters *, imageEffectParameters)

public:
    using MediaAsset::setFile;

    explicit ImageAsset(Context *context);
    ~ImageAsset() override;

    /// Whether the file set last, by this object, could be read as an image. One that could not
    /// has no size, and keeps the images that were made of the former one.
    Q_INVOKABLE [[nodiscard]] bool isValid() const;

    /// The largest image that is read, in MiB of decoded pixels: 512 if nobody says otherwise, 0
    /// for no limit. A larger one counts as unreadable, as soon as its header says so. The limit of
    /// QImageReader in Qt 6, which is one for the whole program, is raised to it.
    [[nodiscard]] static int decodedLimit();
    static void setDecodedLimit(int mebibytes);

protected:
    /// Reads the image and makes the others, which takes some time: for many files there is
    /// ImageImporter.
    void setFile(const QByteArray &hash, const QByteArray &mimeType) override;

private:
    friend class ImageImporter;

    void setFile(const QByteArray &hash, const QByteArray &mimeType, const DerivedImages &images);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
