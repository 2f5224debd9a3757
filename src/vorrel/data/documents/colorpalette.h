// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/colorswatch.h>

#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

/// A named set of colours: an ordered list of swatches, edited through the list functions of
/// Document under the name "swatches".
class VORREL_DATACORE_EXPORT ColorPalette : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ColorPalette)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "colorpalette")
    Q_PROPERTY(
        QQmlListProperty<vo::data::ColorSwatch> swatches READ swatchList NOTIFY swatchesChanged)

public:
    explicit ColorPalette(Context *context);
    ~ColorPalette() override;

    [[nodiscard]] QList<ColorSwatch *> swatches() const;
    [[nodiscard]] QQmlListProperty<ColorSwatch> swatchList();

    /// Appends a new swatch; null below WriteAccess.
    Q_INVOKABLE vo::data::ColorSwatch *addSwatch();

Q_SIGNALS:
    void swatchesChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
