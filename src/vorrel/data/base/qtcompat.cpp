// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/qtcompat_p.h>

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

void raiseImageAllocationLimit(int /*mebibytes*/) { }

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

void raiseImageAllocationLimit(int mebibytes)
{
    const int present = QImageReader::allocationLimit();
    if (present != 0 && (mebibytes == 0 || mebibytes > present)) {
        QImageReader::setAllocationLimit(mebibytes);
    }
}

#endif

} // namespace vo::data::qtcompat
