// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/qtcompat_p.h>

#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtGui/QImageReader>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace vo::data::qtcompat {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

int storedFontWeight(const QFont &font)
{
    return font.weight();
}

void setStoredFontWeight(QFont &font, int weight)
{
    font.setWeight(std::clamp(weight, 0, 99));
}

quint16 checksum(const QByteArray &bytes)
{
    return qChecksum(bytes.constData(), uint(bytes.size()));
}

void raiseImageAllocationLimit(int /*mebibytes*/) { }

namespace {

using Territory = QLocale::Country;

Territory territoryOf(const QLocale &locale)
{
    return locale.country();
}

QString nativeNameOf(const QLocale &locale)
{
    return locale.nativeCountryName();
}

} // namespace

#else

namespace {

struct WeightPair
{
    int stored;
    int qt6;
};

constexpr std::array<WeightPair, 9> weights { {
    { 0, 100 },
    { 12, 200 },
    { 25, 300 },
    { 50, 400 },
    { 57, 500 },
    { 63, 600 },
    { 75, 700 },
    { 81, 800 },
    { 87, 900 },
} };

WeightPair nearest(int value, int WeightPair::*scale)
{
    return *std::min_element(weights.begin(), weights.end(), [=](const auto &a, const auto &b) {
        return std::abs(a.*scale - value) < std::abs(b.*scale - value);
    });
}

} // namespace

int storedFontWeight(const QFont &font)
{
    return nearest(int(font.weight()), &WeightPair::qt6).stored;
}

void setStoredFontWeight(QFont &font, int weight)
{
    const int known = std::clamp(weight, 0, 99);
    font.setWeight(QFont::Weight(nearest(known, &WeightPair::stored).qt6));
}

quint16 checksum(const QByteArray &bytes)
{
    return qChecksum(bytes);
}

void raiseImageAllocationLimit(int mebibytes)
{
    const int present = QImageReader::allocationLimit();
    if (present != 0 && (mebibytes == 0 || mebibytes > present)) {
        QImageReader::setAllocationLimit(mebibytes);
    }
}

namespace {

using Territory = QLocale::Territory;

Territory territoryOf(const QLocale &locale)
{
    return locale.territory();
}

QString nativeNameOf(const QLocale &locale)
{
    return locale.nativeTerritoryName();
}

} // namespace

#endif

QString nativeTerritoryName(const QString &code)
{
    // Qt tells the codes only as parts of the names of locales.
    static const QHash<QString, Territory> territories = [] {
        QHash<QString, Territory> byCode;
        const QList<QLocale> all =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, Territory {});
        for (const QLocale &locale : all) {
            byCode.insert(locale.name().section(QLatin1Char('_'), -1), territoryOf(locale));
        }
        return byCode;
    }();
    const auto found = territories.constFind(code);
    return found == territories.constEnd()
        ? QString()
        : nativeNameOf(QLocale(QLocale::AnyLanguage, QLocale::AnyScript, *found));
}

} // namespace vo::data::qtcompat
