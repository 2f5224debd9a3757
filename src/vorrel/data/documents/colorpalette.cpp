// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/colorpalette.h>

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/properties/inlinedocumentlistproperty.h>

namespace vo::data {

struct ColorPalette::Private
{
    ColorPalette *const q;
    InlineDocumentListProperty<ColorSwatch> swatches { "swatches", q };
};

ColorPalette::ColorPalette(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

ColorPalette::~ColorPalette() = default;

QList<ColorSwatch *> ColorPalette::swatches() const
{
    return d->swatches.get();
}

QQmlListProperty<ColorSwatch> ColorPalette::swatchList()
{
    return ReadOnlyObjectList<ColorSwatch>::property(
        this, [](QObject *palette) { return static_cast<ColorPalette *>(palette)->swatches(); });
}

ColorSwatch *ColorPalette::addSwatch()
{
    if (accessLevel() < WriteAccess) {
        return nullptr;
    }
    auto *swatch = static_cast<ColorSwatch *>(
        InlineDocument::create(typeOf(ColorSwatch::staticMetaObject), this));
    return addListElement(QStringLiteral("swatches"), swatch) ? swatch : nullptr;
}

} // namespace vo::data

#include "moc_colorpalette.cpp"
