// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/documents/fontasset.h>
#include <vorrel/data/documents/imageasset.h>
#include <vorrel/data/documents/imageimporter.h>
#include <vorrel/data/documents/mediaassetcustomfolder.h>
#include <vorrel/data/documents/mediaassetrootfolder.h>
#include <vorrel/data/documents/pdfasset.h>
#include <vorrel/data/documents/videoasset.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtGui/QFontInfo>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <sys/stat.h>

using namespace vo::data;
using namespace vo::test;

namespace {

QByteArray contentOf(const QUrl &file)
{
    QFile content(file.toLocalFile());
    return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray();
}

QByteArray md5(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Md5).toHex();
}

QByteArray drawing(int width, int height)
{
    const auto text = "<svg xmlns='http://www.w3.org/2000/svg' width='%1' height='%2'/>"_s;
    return text.arg(width).arg(height).toLatin1();
}

QImage filled(int width, int height, const QColor &color,
              QImage::Format format = QImage::Format_ARGB32)
{
    QImage image(width, height, format == QImage::Format_Indexed8 ? QImage::Format_RGB32 : format);
    image.fill(color);
    return image.convertToFormat(format);
}

} // namespace

class tst_Assets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        vo::Locations::setCacheLocation(m_directory.filePath("cache"_s));
        AttachmentStore::init();
    }

    void init() { m_context = std::make_unique<TestContext>(); }

    void imagesAreDerived_data()
    {
        const QSize source; // it will do
        const auto rgb = QImage::Format_RGB32;
        QTest::addColumn<QString>("name");
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QSize>("thumbnail");
        QTest::addColumn<QSize>("web");
        QTest::addColumn<QByteArray>("format"); // of them
        QTest::addColumn<QColor>("color");
        const auto row = [](const char *tag, const char *name, const QImage &image, QSize thumbnail,
                            QSize web, const char *format = "png", const QColor &color = {}) {
            QTest::newRow(tag) << QString::fromLatin1(name) << image << thumbnail << web
                               << QByteArray(format) << color;
        };
        row("small", "a.png", filled(255, 255, Qt::blue), source, source);
        row("blue", "a.png", filled(256, 256, Qt::blue), { 256, 256 }, source, "png", 0x7979d2);
        row("white", "a.PNG", filled(256, 256, Qt::white), { 256, 256 }, source, "png", 0xe6e6e6);
        row("transparent", "a.png", filled(256, 9, Qt::transparent), { 7281, 256 }, source, "png",
            0x666666);
        row("a ratio of 2", "a.png", filled(512, 256, Qt::red), { 256, 128 }, source);
        row("a ratio of 1/2", "a.png", filled(256, 512, Qt::red), { 128, 256 }, source);
        row("longer", "a.png", filled(514, 256, Qt::red), { 514, 256 }, source);
        row("taller", "a.png", filled(256, 514, Qt::red), { 256, 514 }, source);
        row("for the web", "a.jpeg", filled(1024, 1024, Qt::red), { 256, 256 }, source, "jpeg");
        row("too wide", "a.jpg", filled(1025, 1000, Qt::red), { 256, 249 }, { 1024, 999 }, "jpeg");
        row("a drawing", "a.svg", filled(2000, 1500, Qt::red), source, source);
        row("opaque", "a.bmp", filled(2000, 1500, Qt::red, rgb), { 256, 192 }, { 1024, 768 },
            "jpeg");
        row("indexed", "a.bmp", filled(2000, 1500, Qt::red, QImage::Format_Indexed8), { 256, 192 },
            { 1024, 768 });
        row("alpha", "a.webp", filled(300, 300, QColor(255, 0, 0, 100)), { 256, 256 }, source);
        row("of a wrong name", "png.jpg", filled(300, 300, Qt::red), { 256, 256 }, source, "jpeg");
        row("without a suffix", "a", filled(300, 300, Qt::red, rgb), { 256, 256 }, source, "jpeg");
    }
    void imagesAreDerived()
    {
        QFETCH(QString, name);
        QFETCH(QImage, image);
        QFETCH(QSize, thumbnail);
        QFETCH(QSize, web);
        QFETCH(QByteArray, format);
        QFETCH(QColor, color);
        const LogCapture log;
        auto *asset = m_context->create<ImageAsset>();
        const QJsonObject former = asset->Document::serialize();
        m_context->recording = true;
        asset->setFile(write(name, image));
        QVERIFY(asset->isValid() && asset->size() == image.size());
        const QJsonObject json = asset->Document::serialize();
        const QSize size = image.size();
        const auto check = [&](const char *property, QSize expected) {
            const QUrl url = asset->property(property).toUrl();
            const QString key = QString::fromLatin1(property);
            QCOMPARE(json.value(key).toString().toLatin1(), md5(contentOf(url)));
            QCOMPARE(asset->property(qPrintable(key + "Size"_s)).toSize(),
                     expected.isEmpty() ? size : expected);
            QCOMPARE(url == asset->file(), expected.isEmpty() || expected == size);
            if (!expected.isEmpty()) {
                QCOMPARE(QImage(url.toLocalFile()).size(), expected);
                QCOMPARE(asset->attachment(key)->mimeType(), "image/" + format);
                QVERIFY(contentOf(url).left(4).contains(format == "png" ? "PNG" : "\xFF\xD8"));
            }
        };
        check("thumbnail", thumbnail);
        check("webOptimized", web);
        if (color.isValid()) {
            QCOMPARE(asset->proxyColor().name(), color.name());
        }
        m_context->undo();
        QCOMPARE(asset->Document::serialize(), former);
        m_context->redo();
        QCOMPARE(asset->Document::serialize(), json);
        QCOMPARE(log.lines(), QStringList());
    }

    void whatIsNoImageHasNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QByteArray bomb = contentOf(write("b.bmp"_s, filled(1, 1, Qt::red, QImage::Format_RGB32)));
        const QByteArray side = QByteArray::fromHex("60ea0000"); // 60,000
        bomb.replace(18, 8, side + side);
        QTest::newRow("bomb") << bomb;
        QTest::newRow("truncated")
            << contentOf(write("t.png"_s, filled(300, 300, Qt::red))).left(60);
        QTest::newRow("text") << QByteArray("This is not a picture.");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("drawn too large") << drawing(60000, 60000);
    }
    void whatIsNoImageHasNothing()
    {
        QFETCH(QByteArray, content);
        auto *asset = m_context->create<ImageAsset>();
        asset->setFile(write("bad.png"_s, content));
        QVERIFY(!asset->isValid() && asset->size().isEmpty());
        QCOMPARE(contentOf(asset->file()), content);
        QVERIFY(asset->thumbnail().isEmpty() && asset->webOptimized().isEmpty());
        QVERIFY(!m_context->create<VideoAsset>()->setPoster(m_directory.filePath("bad.png"_s)));
    }

    void whatIsNoFileIsRefused()
    {
        const QString pipe = m_directory.filePath("pipe.png"_s);
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        auto *image = m_context->create<ImageAsset>();
        auto *video = m_context->create<VideoAsset>();
        const QJsonObject before = image->serialize();
        for (const QString &path : { pipe, m_directory.path(), m_directory.filePath("none"_s) }) {
            LogCapture log;
            image->setFile(QUrl::fromLocalFile(path));
            QVERIFY(!video->setPoster(path));
            QCOMPARE(log.lines().filter("|critical|Failed to open file"_s).size(), 2);
        }
        QCOMPARE(image->serialize(), before);
    }

    void theLimitOfImagesCanBeSet()
    {
        const QUrl file = write("large.png"_s, filled(600, 600, Qt::red));
        auto *asset = m_context->create<ImageAsset>();
        const int limit = ImageAsset::decodedLimit();
        for (const int mebibytes : { 1, 2, 0 }) {
            ImageAsset::setDecodedLimit(mebibytes);
            asset->setFile(file);
            QCOMPARE(asset->isValid(), mebibytes != 1);
        }
        ImageAsset::setDecodedLimit(limit);
    }

    void manyFilesAreImportedAsEachAlone()
    {
        const QStringList suffixes = "png jpg bmp webp svg txt"_l;
        QList<QUrl> files { QUrl::fromLocalFile(m_directory.path()) };
        for (int i = 0; i < 200; ++i) {
            const QString name = "%1.%2"_s.arg(i).arg(suffixes.at(i % 6));
            files << (i % 6 == 5
                          ? write(name, name.toUtf8())
                          : write(name,
                                  filled(i * 10 + 1, 2000 - i * 9, QColor::fromHsv(i, 99, 99))));
        }
        ImageImporter importer;
        importer.setContext(m_context.get());
        importer.setFolder(MediaAssetFolder::root(m_context.get()));
        importer.add(files);
        importer.cancel();
        QHash<QUrl, ImageAsset *> images;
        connect(&importer, &ImageImporter::imported, this,
                [&](const QUrl &file, ImageAsset *image) { images.insert(file, image); });
        const QSignalSpy failed(&importer, &ImageImporter::failed);
        const QSignalSpy finished(&importer, &ImageImporter::finished);
        importer.add(files);
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 60000);
        QVERIFY(images.size() == 200 && failed.count() == 1 && importer.progress() == 1);
        for (const QUrl &file : files.mid(1)) {
            auto *alone = m_context->create<ImageAsset>();
            alone->setParentFolder(nullptr);
            alone->setFile(file);
            QCOMPARE(images.value(file)->Document::serialize(), alone->Document::serialize());
            QCOMPARE(alone->hash().toLatin1(), md5(contentOf(file)));
        }
    }

    void imagesMayDieWhileTheirFileIsSet()
    {
        const QUrl file = write("die.png"_s, filled(2000, 2000, Qt::red));
        for (const char *signal :
             { "fileNameChanged", "sizeChanged", "thumbnailChanged", "thumbnailSizeChanged",
               "proxyColorChanged", "webOptimizedChanged", "webOptimizedSizeChanged" }) {
            const QPointer<ImageAsset> asset(m_context->create<ImageAsset>());
            const SignalHook hook(asset, signal, [&] { delete asset; });
            asset->setFile(file);
            QVERIFY2(!asset, signal);
        }
    }

    void imagesWithoutAColorHaveOneOfTheirId()
    {
        const std::vector<std::pair<QString, QRgb>> colors { { "00000000"_s, 0xCBC7C5 },
                                                             { "0c0100ff"_s, 0xBCA1A4 },
                                                             { "1"_s, 0xDDD9D4 },
                                                             { "zzz"_s, 0xCBC7C5 } };
        for (const auto &[id, color] : colors) {
            auto *image = m_context->create<ImageAsset>(id);
            image->Document::assignData({ { "proxyColor"_s, "#000000"_s } });
            QCOMPARE(image->proxyColor().name(), QColor(color).name());
        }
    }

    void effectsTellWhetherThereAreAny()
    {
        auto *image = m_context->create<ImageAsset>();
        QVERIFY(image->serialize().value("imageEffectParameters"_s).isNull());
        ImageEffectParameters *effects = image->imageEffectParameters();
        const QSignalSpy any(effects, &ImageEffectParameters::parameterChanged);
        const QSignalSpy neutral(effects, &ImageEffectParameters::neutralChanged);
        image->markClean("1-x"_s, image->changeSequenceNumber(), {});
        QVERIFY(effects->isNeutral() && !image->isDirty());
        QVERIFY(effects->setRed(0.5F) && effects->setFilterId("sepia"_s) && image->isDirty());
        effects->setRed(0.0000001F);
        QVERIFY(!effects->isNeutral() && neutral.count() == 1 && any.count() == 3);
        effects->reset();
        QVERIFY(effects->isNeutral() && neutral.count() == 2);
        effects->assignData({ { "filterIntensity"_s, 0.5 } });
        QVERIFY(!effects->isNeutral() && neutral.count() == 3);
        image->Document::assignData({ { "imageEffectParameters"_s, {} } }); // somebody's reset
        QVERIFY(image->imageEffectParameters() != effects);
        QVERIFY(image->imageEffectParameters()->isNeutral());
    }

    void foldersListWhatLiesInThem()
    {
        auto *root = MediaAssetFolder::root(m_context.get());
        auto *folder = m_context->create<MediaAssetCustomFolder>("f"_s);
        auto *inner = m_context->create<MediaAssetCustomFolder>("g"_s);
        auto *image = m_context->create<ImageAsset>("i"_s);
        QVERIFY(!root->isDirty() && root->isLocal() && root->label() == "Media"_s);
        QCOMPARE(folder->type(), "mediaassetfolder"_s);
        QVERIFY(folder->setParentFolder(nullptr) && inner->setParentFolder(folder));
        QVERIFY(!folder->setParentFolder(inner) && image->setParentFolder(nullptr));
        QCOMPARE(root->childFolders(), QList<MediaAssetFolder *> { folder });
        QCOMPARE(root->assets(), QList<MediaAsset *> { image });
        const QSignalSpy moved(root, &MediaAssetFolder::assetsChanged);
        image->setParentFolder(folder);
        QVERIFY(root->assets().isEmpty() && folder->assets() == QList<MediaAsset *> { image });
        image->markClean("1-x"_s, image->changeSequenceNumber(), {});
        for (const auto level : { Document::NoAccess, Document::WriteAccess }) {
            m_context->setLevel("i"_s, level); // nobody sees where it is
            processEvents();
            QCOMPARE(folder->assets().isEmpty(), level == Document::NoAccess);
        }
        m_context->recording = true;
        image->remove();
        QVERIFY(folder->assets().isEmpty());
        m_context->undo();
        QCOMPARE(folder->assets(), QList<MediaAsset *> { image });
        delete image;
        QVERIFY(folder->assets().isEmpty() && moved.count() == 1);
    }

    void videosHaveAPoster()
    {
        auto *video = m_context->create<VideoAsset>();
        const QUrl poster = write("poster.jpg"_s, filled(800, 400, Qt::red));
        QVERIFY(video->setPoster(poster.toLocalFile()));
        QCOMPARE(contentOf(video->poster()), contentOf(poster));
        QVERIFY(video->thumbnailSize() == QSize(256, 128) && !video->thumbnail().isEmpty());
        const QByteArray small = contentOf(write("small.png"_s, filled(8, 8, Qt::red)));
        AttachmentStore::storeAttachment(small, QByteArray::fromHex(md5(small)));
        QVERIFY(video->setPoster(QByteArray::fromHex(md5(small))));
        QCOMPARE(video->thumbnail(), video->poster());
        m_context->create<PdfAsset>()->setPdf(QByteArray::fromHex(md5(small)));
    }

    void fontsAreReadFromTheirFiles()
    {
        auto *font = m_context->create<FontAsset>();
        font->setFile(write("bad.ttf"_s, QByteArray("no font")));
        QVERIFY(font->label() == "bad.ttf"_s && font->createFont(20).pixelSize() == 20);
        const QSignalSpy labels(font, &Document::labelChanged);
        font->setFile(
            QUrl::fromLocalFile("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"_s));
        QVERIFY(font->label() == "DejaVu Sans Bold"_s && !labels.isEmpty());
        const QFont made = font->createFont(20);
        QCOMPARE(QFontInfo(made).family(), "DejaVu Sans"_s);
        QVERIFY(QFontInfo(made).bold() && made.pixelSize() == 20);
    }

private:
    QUrl write(const QString &name, const QByteArray &content)
    {
        QFile file(m_directory.filePath(name));
        const bool written =
            file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
        return written ? QUrl::fromLocalFile(file.fileName()) : QUrl();
    }

    QUrl write(const QString &name, const QImage &image)
    {
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath(name));
        if (name.endsWith(".svg"_s)) {
            return write(name, drawing(image.width(), image.height()));
        }
        const QString format = name.contains(QLatin1Char('.')) ? QFileInfo(name).suffix() : "bmp"_s;
        const bool isPng = name == "png.jpg"_s;
        return image.save(file.toLocalFile(), isPng ? "png" : qPrintable(format)) ? file : QUrl();
    }

    QTemporaryDir m_directory;
    std::unique_ptr<TestContext> m_context;
};

QTEST_MAIN(tst_Assets)
#include "tst_assets.moc"
