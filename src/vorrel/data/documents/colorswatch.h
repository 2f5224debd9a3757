// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>

#include <QtCore/QJsonArray>
#include <QtGui/QColor>

namespace vo::data {

/// Colours that belong together, as one entry of a palette.
class VORREL_DATACORE_EXPORT ColorSwatch : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ColorSwatch)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "colorswatch")
    Q_PROPERTY(QJsonArray colors READ colors NOTIFY colorsChanged)

public:
    explicit ColorSwatch(Document *parent);
    ~ColorSwatch() override;

    /// The texts of the colours.
    [[nodiscard]] QJsonArray colors() const;

    /// An index out of range appends. All edits give false where they change nothing.
    Q_INVOKABLE bool insertColor(const QColor &color, int index = -1);
    Q_INVOKABLE bool removeColor(const QColor &color);
    Q_INVOKABLE bool removeColor(int index);
    Q_INVOKABLE bool setColor(const QColor &color, int index);

Q_SIGNALS:
    void colorsChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
