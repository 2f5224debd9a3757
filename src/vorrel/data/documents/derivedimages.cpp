// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/derivedimages_p.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/qtcompat_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QTemporaryFile>
#include <QtCore/QtEndian>
#include <QtGui/QImageReader>

#include <algorithm>
#include <array>
#include <atomic>

namespace vo::data {

namespace {

constexpr int thumbnailSide = 256;
constexpr int webSide = 1024;
constexpr int webQuality = 85;
constexpr int defaultQuality = -1;
constexpr double longestFittingRatio = 2.0;

std::atomic<int> limitInMebibytes { tuning::decodedImageLimit };

bool isWithinLimit(const QSize &size)
{
    constexpr qint64 bytesPerPixel = 4;
    constexpr qint64 mebibyte = 1024LL * 1024;
    const qint64 limit = limitInMebibytes;
    return limit == 0 || qint64(size.width()) * size.height() * bytesPerPixel <= limit * mebibyte;
}

QByteArray formatFor(const QImage &image, const QString &suffix)
{
    for (const char *format : { "jpg", "jpeg", "png" }) {
        if (suffix == QLatin1String(format)) {
            return format;
        }
    }
    return image.hasAlphaChannel() || image.format() == QImage::Format_Indexed8 ? "png" : "jpg";
}

/// Null for one that would be beyond the limit: a line of pixels grows by its length.
QImage scaled(const QImage &image, int side, Qt::AspectRatioMode mode)
{
    const QSize size = image.size().scaled(side, side, mode);
    return isWithinLimit(size) ? image.scaled(side, side, mode, Qt::SmoothTransformation)
                               : QImage();
}

/// Encodes \p image and puts it into the store. \p failure is the line for one that cannot be
/// written, with places for the name of the file and the reason.
DerivedImage store(const QImage &image, const QByteArray &format, int quality, const char *failure)
{
    DerivedImage derived;
    QTemporaryFile file;
    const bool isOpen = file.open();
    if (!isOpen || !image.save(&file, format.constData(), quality) || !file.seek(0)) {
        qCCritical(lcData, failure, qPrintable(file.fileName()), qPrintable(file.errorString()));
        derived.state = DerivedImage::Failed;
        return derived;
    }
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(&file);
    derived.hash = hash.result();
    derived.mimeType = MimeMap::mimeTypeForSuffix(QString::fromLatin1(format));
    derived.size = image.size();
    AttachmentStore::storeAttachment(&file, derived.hash);
    const bool isStored = AttachmentStore::contains(derived.hash); // else the store has told why
    derived.state = isStored ? DerivedImage::Stored : DerivedImage::Failed;
    return derived;
}

/// A drawing has no pixels that could be too many.
bool isDrawing(const QString &suffix)
{
    return suffix == QLatin1String("svg");
}

} // namespace

int decodedImageLimit()
{
    return limitInMebibytes;
}

void setDecodedImageLimit(int mebibytes)
{
    limitInMebibytes = std::max(0, mebibytes);
}

QImage readImage(const QString &path)
{
    qtcompat::raiseImageAllocationLimit(limitInMebibytes);
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size(); // from the header
    return isWithinLimit(size) ? reader.read() : QImage();
}

DerivedImage makeThumbnail(const QImage &image, const QString &suffix)
{
    if (std::max(image.width(), image.height()) < thumbnailSide || isDrawing(suffix)) {
        return {};
    }
    const double ratio = double(image.width()) / image.height();
    const bool isLong = ratio > longestFittingRatio || ratio < 1 / longestFittingRatio;
    const QImage thumbnail =
        scaled(image, thumbnailSide, isLong ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio);
    DerivedImage derived = store(thumbnail, formatFor(image, suffix), defaultQuality,
                                 "Failed to store thumbnail file %s: %s");
    if (derived.state == DerivedImage::Stored) {
        derived.meanColor = proxyColorOf(thumbnail);
    }
    return derived;
}

DerivedImage makeWebVersion(const QImage &image, const QString &suffix)
{
    if (std::max(image.width(), image.height()) <= webSide || isDrawing(suffix)) {
        return {};
    }
    return store(scaled(image, webSide, Qt::KeepAspectRatio), formatFor(image, suffix), webQuality,
                 "Failed to store web-safe file %s: %s");
}

DerivedImages DerivedImages::make(const QString &path, const QString &suffix)
{
    DerivedImages images;
    const QImage image = readImage(path);
    if (!image.isNull()) {
        images.size = image.size();
        images.thumbnail = makeThumbnail(image, suffix);
        images.webVersion = makeWebVersion(image, suffix);
    }
    return images;
}

QColor proxyColorOf(const QImage &image)
{
    constexpr int leastAlpha = 5;
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    quint64 red = 0;
    quint64 green = 0;
    quint64 blue = 0;
    quint64 count = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            const QRgb pixel = line[x];
            if (qAlpha(pixel) >= leastAlpha) {
                red += quint64(qRed(pixel));
                green += quint64(qGreen(pixel));
                blue += quint64(qBlue(pixel));
                ++count;
            }
        }
    }
    count = std::max<quint64>(count, 1);
    const QColor mean(int(red / count), int(green / count), int(blue / count));
    const double saturation = std::min<double>(mean.saturationF(), 0.5);
    const double lightness = std::max(std::min<double>(mean.lightnessF() + 0.15, 0.9), 0.4);
    using Part = decltype(mean.hueF()); // of another width in Qt 5 and Qt 6
    return QColor::fromHslF(mean.hueF(), Part(saturation), Part(lightness), 1.0);
}

QColor proxyColorOf(const QByteArray &documentId)
{
    constexpr std::array<QRgb, 12> colors { 0xCBC7C5, 0xDDD9D4, 0xE6E4E0, 0xABB3B6,
                                            0xBCA1A4, 0xD7B8B3, 0xE1DCD3, 0xD3C4B0,
                                            0xC5D0AA, 0xC7D4BC, 0x9CACBB, 0xB9B5CA };
    // Padded: an id of an application's own may have no hexadecimal digits at all.
    const QByteArray bytes = QByteArray::fromHex(documentId) + QByteArray(4, '\0');
    return QColor(colors[qFromLittleEndian<quint32>(bytes.constData()) % colors.size()]);
}

} // namespace vo::data
