// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaasset.h>

#include <QtCore/QSize>

QT_BEGIN_NAMESPACE
class QImage;
QT_END_NAMESPACE

namespace vo::data {

/// A video. The library does not look into it: an application that can sets what is known of it,
/// and the poster, an image that stands for it. A thumbnail is made of the poster. The duration is
/// in milliseconds.
///
///     Video { source: video.playableFile }
class VORREL_DATACORE_EXPORT VideoAsset : public vo::data::MediaAsset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(VideoAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "video")
    VO_READONLY_PROPERTY(QUrl, poster)
    VO_READONLY_PROPERTY(QUrl, thumbnail)
    Q_PROPERTY(QUrl playableFile READ playableFile NOTIFY playableFileChanged STORED false)
    VO_PROPERTY(int, duration, setDuration)
    VO_PROPERTY(QSize, resolution, setResolution)
    Q_PROPERTY(QSize size READ resolution NOTIFY resolutionChanged STORED false)
    VO_READONLY_PROPERTY(QSize, thumbnailSize)
    VO_PROPERTY(bool, hasAudio, setHasAudio)

public:
    explicit VideoAsset(Context *context);
    ~VideoAsset() override;

    /// Takes the file of this \p hash, in 16 bytes, which is in the attachment store.
    void setVideo(const QByteArray &hash);

    /// The local file. Empty without one: it is being fetched from now on, and
    /// playableFileChanged() comes then.
    [[nodiscard]] QUrl playableFile() const;

    /// Takes over an image file, as an edit. False, and nothing happens, for one that cannot be
    /// read as an image.
    Q_INVOKABLE bool setPoster(const QString &filePath);

    /// The same for a file of this \p hash, in 16 bytes, that is in the attachment store. The
    /// poster is set in any case; false says that it has given no thumbnail.
    bool setPoster(const QByteArray &hash);

Q_SIGNALS:
    void playableFileChanged();

private:
    void setPoster(const QByteArray &hash, const QByteArray &mimeType, const QImage &image,
                   const QString &suffix);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
