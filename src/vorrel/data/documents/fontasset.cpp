// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/fontasset.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/properties/property.h>

#include <vorrel/util/fontmanager.h>

#include <QtCore/QStringList>
#include <QtGui/QRawFont>

namespace vo::data {

struct FontAsset::Private
{
    FontAsset *const q;
    Property<bool> userSelectable { "userSelectable", q };
    Property<QString> copyright { "copyright", q };
    Property<QString> license { "license", q };
};

FontAsset::FontAsset(Context *context)
    : Asset(context)
    , d(new Private { this })
{
    connect(this, &Asset::localFileChanged, this, &Document::labelChanged);
}

FontAsset::~FontAsset() = default;

VO_DEFINE_PROPERTY(FontAsset, bool, userSelectable, setUserSelectable)
VO_DEFINE_PROPERTY(FontAsset, QString, copyright, setCopyright)
VO_DEFINE_PROPERTY(FontAsset, QString, license, setLicense)

vo::util::FontInfo FontAsset::fontInfo() const
{
    return vo::util::FontManager::instance().fontInfo(file().toLocalFile());
}

QString FontAsset::localizedStyleName() const
{
    QStringList words = fontInfo().styleName().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString &word : words) {
        const QByteArray id = textids::fontStylePrefix + word.toLower().toLatin1();
        const QString text = qtTrId(id.constData());
        if (text != QLatin1String(id)) {
            word = text;
        }
    }
    return words.join(QLatin1Char(' '));
}

QString FontAsset::label() const
{
    const QString family = fontInfo().family();
    return family.isEmpty() ? Asset::label() : family + QLatin1Char(' ') + localizedStyleName();
}

QFont FontAsset::createFont(int pixelSize) const
{
    vo::util::FontManager &fonts = vo::util::FontManager::instance();
    const QString path = localFile().toLocalFile();
    QFont font; // that of the application
    if (fonts.install(path)) {
        const QRawFont file(path, 1);
        font.setFamily(file.familyName());
        font.setStyleName(file.styleName());
        font.setWeight(QFont::Weight(file.weight()));
        font.setStyle(file.style());
    }
    if (pixelSize > 0) {
        font.setPixelSize(pixelSize);
    }
    return font;
}

} // namespace vo::data

#include "moc_fontasset.cpp"
