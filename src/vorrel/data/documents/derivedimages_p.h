// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>

/// \file
/// What is made of an image when it comes in. All of this works on files and pixels alone, on any
/// thread: no document is touched.

namespace vo::data {

/// The largest image that is read, in MiB of decoded pixels, without an end for 0.
[[nodiscard]] int decodedImageLimit();
void setDecodedImageLimit(int mebibytes);

/// The upright image in the file, whatever its name says. Null if there is none in it, and for one
/// beyond decodedImageLimit(), whose header tells that.
[[nodiscard]] QImage readImage(const QString &path);

/// A smaller image in the attachment store.
struct DerivedImage
{
    enum State {
        SourceWillDo, ///< the source image is small enough, or a drawing
        Failed,       ///< it could not be written, as a critical line says
        Stored,
    };

    State state = SourceWillDo;
    QByteArray hash; // this and the following if it is stored
    QByteArray mimeType;
    QSize size;
    QColor meanColor; // of a thumbnail
};

/// Makes a thumbnail of 256 by 256 pixels at most, unless \p image is very long or very tall: then
/// the short side has 256. \p suffix, in lower case, is that of the source and chooses the format.
[[nodiscard]] DerivedImage makeThumbnail(const QImage &image, const QString &suffix);

/// Makes a version of 1024 by 1024 pixels at most, as web pages want it.
[[nodiscard]] DerivedImage makeWebVersion(const QImage &image, const QString &suffix);

/// All of it for one file.
struct DerivedImages
{
    /// Reads the image in the file \p path and makes the others.
    static DerivedImages make(const QString &path, const QString &suffix);

    QSize size; // of the image; empty if it is not one
    DerivedImage thumbnail;
    DerivedImage webVersion;
};

/// A muted mean colour, never dark or glaring, of all pixels that can be seen.
[[nodiscard]] QColor proxyColorOf(const QImage &image);

/// The colour for an image without one of its own: always the same for the same id.
[[nodiscard]] QColor proxyColorOf(const QByteArray &documentId);

} // namespace vo::data
