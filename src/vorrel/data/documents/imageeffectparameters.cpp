// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/imageeffectparameters.h>

#include <vorrel/data/properties/property.h>

#include <QtCore/QPointer>

#include <algorithm>
#include <array>
#include <cmath>

namespace vo::data {

/// The edit of one parameter.
using ParameterChange = ValueChange<float>;

namespace {

class Parameter : public Property<float>
{
public:
    Parameter(const char *name, float neutral, Document *document)
        : Property(name, neutral, document)
        , m_neutral(neutral)
    { }

    [[nodiscard]] bool isNeutral() const
    {
        constexpr float tolerance = 0.00001F; // a relative one is none beside 0
        return !canRead() || std::abs(get() - m_neutral) <= tolerance;
    }
    void reset() { set(m_neutral); }

private:
    const float m_neutral;
};

} // namespace

struct ImageEffectParameters::Private
{
    ImageEffectParameters *const q;
    Parameter exposure { "exposure", 0, q };
    Parameter lightTones { "lightTones", 0, q };
    Parameter darkTones { "darkTones", 0, q };
    Parameter clarity { "clarity", 0, q };
    Parameter filterIntensity { "filterIntensity", 1, q };
    Parameter vignette { "vignette", 0, q };
    Parameter softLight { "softLight", 0, q };
    Parameter red { "red", 0, q };
    Parameter orange { "orange", 0, q };
    Parameter yellow { "yellow", 0, q };
    Parameter green { "green", 0, q };
    Parameter aqua { "aqua", 0, q };
    Parameter blue { "blue", 0, q };
    Parameter purple { "purple", 0, q };
    Parameter magenta { "magenta", 0, q };
    Property<QString> filterId { "filterId", q };
    bool neutral = true; // as last told

    [[nodiscard]] std::array<Parameter *, 15> parameters()
    {
        return { &exposure, &lightTones, &darkTones, &clarity, &filterIntensity,
                 &vignette, &softLight,  &red,       &orange,  &yellow,
                 &green,    &aqua,       &blue,      &purple,  &magenta };
    }
};

ImageEffectParameters::ImageEffectParameters(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

ImageEffectParameters::~ImageEffectParameters() = default;

VO_DEFINE_PROPERTY(ImageEffectParameters, float, exposure, setExposure)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, lightTones, setLightTones)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, darkTones, setDarkTones)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, clarity, setClarity)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, filterIntensity, setFilterIntensity)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, vignette, setVignette)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, softLight, setSoftLight)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, red, setRed)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, orange, setOrange)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, yellow, setYellow)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, green, setGreen)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, aqua, setAqua)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, blue, setBlue)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, purple, setPurple)
VO_DEFINE_PROPERTY(ImageEffectParameters, float, magenta, setMagenta)
VO_DEFINE_PROPERTY(ImageEffectParameters, QString, filterId, setFilterId)

bool ImageEffectParameters::isNeutral() const
{
    const auto parameters = d->parameters();
    return d->filterId.get().isEmpty()
        && std::all_of(parameters.begin(), parameters.end(),
                       [](const Parameter *parameter) { return parameter->isNeutral(); });
}

void ImageEffectParameters::reset()
{
    const QPointer<ImageEffectParameters> self(this);
    for (Parameter *parameter : d->parameters()) {
        parameter->reset();
        if (!self) {
            return;
        }
    }
    d->filterId.set({});
}

void ImageEffectParameters::initialize()
{
    d->neutral = isNeutral();
    InlineDocument::initialize();
}

void ImageEffectParameters::reportDocumentChange()
{
    const QPointer<ImageEffectParameters> self(this);
    Q_EMIT parameterChanged();
    if (self && d->neutral != isNeutral()) {
        d->neutral = !d->neutral;
        Q_EMIT neutralChanged();
    }
    if (self) {
        InlineDocument::reportDocumentChange();
    }
}

} // namespace vo::data

#include "moc_imageeffectparameters.cpp"
