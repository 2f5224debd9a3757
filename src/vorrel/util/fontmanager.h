// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/util/utilexport.h>

#include <QtCore/QHash>
#include <QtCore/QString>

namespace vo::util {

/// What a font is called.
class VORREL_UTIL_EXPORT FontInfo
{
public:
    FontInfo();
    FontInfo(const QString &family, const QString &styleName);
    FontInfo(const FontInfo &other);
    FontInfo &operator=(const FontInfo &other);
    ~FontInfo();

    /// Empty for what is not a font.
    [[nodiscard]] QString family() const;

    /// In English, such as "Bold Italic".
    [[nodiscard]] QString styleName() const;

private:
    QString m_family;
    QString m_styleName;
};

/// The fonts in files. Each file is read once: its content must not change after that. Without a
/// QGuiApplication, which knows how to read fonts, nothing is one. Use it on the thread of the
/// application only.
class VORREL_UTIL_EXPORT FontManager
{
public:
    static FontManager &instance();

    /// What the font in the file \p path is called.
    [[nodiscard]] FontInfo fontInfo(const QString &path);

    /// Makes the font known to the application, so that QFont finds it by its family, until the
    /// application ends. False for what is not a font.
    bool install(const QString &path);

private:
    struct Font
    {
        FontInfo info;
        int applicationFont = -1; // of QFontDatabase
    };

    FontManager() = default;

    QHash<QString, Font> m_fonts; // by path
};

} // namespace vo::util
