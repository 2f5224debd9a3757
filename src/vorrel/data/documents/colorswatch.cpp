// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/colorswatch.h>

#include <vorrel/data/properties/listproperty.h>

namespace vo::data {

struct ColorSwatch::Private
{
    ColorSwatch *const q;
    ListProperty<QColor> colors { "colors", q };
};

ColorSwatch::ColorSwatch(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

ColorSwatch::~ColorSwatch() = default;

QJsonArray ColorSwatch::colors() const
{
    QJsonArray array;
    const QList<QColor> colors = d->colors.get();
    for (const QColor &color : colors) {
        array.append(convertToJson(color));
    }
    return array;
}

bool ColorSwatch::insertColor(const QColor &color, int index)
{
    QList<QColor> colors = d->colors.get();
    const bool inRange = index >= 0 && index <= colors.size();
    colors.insert(inRange ? index : int(colors.size()), color);
    return d->colors.set(colors);
}

bool ColorSwatch::removeColor(const QColor &color)
{
    QList<QColor> colors = d->colors.get();
    return colors.removeOne(color) && d->colors.set(colors);
}

bool ColorSwatch::removeColor(int index)
{
    QList<QColor> colors = d->colors.get();
    if (index < 0 || index >= colors.size()) {
        return false;
    }
    colors.removeAt(index);
    return d->colors.set(colors);
}

bool ColorSwatch::setColor(const QColor &color, int index)
{
    QList<QColor> colors = d->colors.get();
    if (index < 0 || index >= colors.size()) {
        return false;
    }
    colors.replace(index, color);
    return d->colors.set(colors);
}

} // namespace vo::data

#include "moc_colorswatch.cpp"
