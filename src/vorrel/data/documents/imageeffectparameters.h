// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// How an image is to be shown: corrections and a filter, which change no pixel of the file.
///
///     Slider {
///         value: image.imageEffectParameters.exposure
///         onMoved: image.imageEffectParameters.exposure = value
///     }
///     Button { text: "Original"; onClicked: image.imageEffectParameters.reset() }
///
/// Edits of one parameter within half a second make one step of an EditContext.
class VORREL_DATACORE_EXPORT ImageEffectParameters : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageEffectParameters)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "imageeffectparameters")
    VO_PROPERTY(float, exposure, setExposure)
    VO_PROPERTY(float, lightTones, setLightTones)
    VO_PROPERTY(float, darkTones, setDarkTones)
    VO_PROPERTY(float, clarity, setClarity)
    VO_PROPERTY(float, filterIntensity, setFilterIntensity)
    VO_PROPERTY(float, vignette, setVignette)
    VO_PROPERTY(float, softLight, setSoftLight)
    VO_PROPERTY(float, red, setRed)
    VO_PROPERTY(float, orange, setOrange)
    VO_PROPERTY(float, yellow, setYellow)
    VO_PROPERTY(float, green, setGreen)
    VO_PROPERTY(float, aqua, setAqua)
    VO_PROPERTY(float, blue, setBlue)
    VO_PROPERTY(float, purple, setPurple)
    VO_PROPERTY(float, magenta, setMagenta)
    VO_PROPERTY(QString, filterId, setFilterId)
    Q_PROPERTY(bool neutral READ isNeutral NOTIFY neutralChanged STORED false)

public:
    explicit ImageEffectParameters(Document *parent);
    ~ImageEffectParameters() override;

    /// Whether the image is shown as it is: filterIntensity is 1, all others are 0, and there is
    /// no filter. True below ReadAccess.
    [[nodiscard]] bool isNeutral() const;

    /// Makes it neutral.
    Q_INVOKABLE void reset();

    void initialize() override;

Q_SIGNALS:
    /// Any of them changed.
    void parameterChanged();
    void neutralChanged();

protected Q_SLOTS:
    void reportDocumentChange() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
