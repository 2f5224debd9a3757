// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/fontmanager.h>

#include <QtCore/QFileInfo>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QRawFont>

namespace vo::util {

FontInfo::FontInfo() = default;
FontInfo::FontInfo(const FontInfo &other) = default;
FontInfo &FontInfo::operator=(const FontInfo &other) = default;
FontInfo::~FontInfo() = default;

FontInfo::FontInfo(const QString &family, const QString &styleName)
    : m_family(family)
    , m_styleName(styleName)
{ }

QString FontInfo::family() const
{
    return m_family;
}

QString FontInfo::styleName() const
{
    return m_styleName;
}

FontManager &FontManager::instance()
{
    static FontManager manager;
    return manager;
}

FontInfo FontManager::fontInfo(const QString &path)
{
    const auto known = m_fonts.constFind(path);
    if (known != m_fonts.constEnd()) {
        return known->info;
    }
    // Another file may come there, so nothing is noted of none.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        || !QFileInfo(path).isFile()) {
        return {};
    }
    constexpr qreal anySize = 16;
    const QRawFont font(path, anySize);
    const FontInfo info =
        font.isValid() ? FontInfo(font.familyName(), font.styleName()) : FontInfo();
    m_fonts.insert(path, { info });
    return info;
}

bool FontManager::install(const QString &path)
{
    if (fontInfo(path).family().isEmpty()) {
        return false;
    }
    Font &font = m_fonts[path];
    if (font.applicationFont < 0) {
        font.applicationFont = QFontDatabase::addApplicationFont(path);
    }
    return font.applicationFont >= 0;
}

} // namespace vo::util
