// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

#include <QtGui/QFont>

namespace vo::util {
class FontInfo;
}

namespace vo::data {

/// A font that an application brings along in its database:
///
///     Text { text: font.label; font: fontAsset.createFont(24) }
///
/// What it is called is read from the file, as soon as that is here; see localFile().
class VORREL_DATACORE_EXPORT FontAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FontAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "font")
    VO_PROPERTY(bool, userSelectable, setUserSelectable)
    VO_PROPERTY(QString, copyright, setCopyright)
    VO_PROPERTY(QString, license, setLicense)

public:
    explicit FontAsset(Context *context);
    ~FontAsset() override;

    /// Family and style as in the file, empty for one that is not here or is no font.
    [[nodiscard]] vo::util::FontInfo fontInfo() const;

    /// The name of the style in the language of the user, such as "Fett Kursiv".
    [[nodiscard]] QString localizedStyleName() const;

    /// Family and style. As long as they are not known, the label that all assets have.
    [[nodiscard]] QString label() const override;

    /// The font, to be used as any other. As long as the file is not here it is being fetched, and
    /// the font is that of the application. Needs a QGuiApplication.
    Q_INVOKABLE [[nodiscard]] QFont createFont(int pixelSize) const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
