// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/country.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/qtcompat_p.h>
#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/documents/flags_p.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

namespace {

bool isKnown(const QString &code)
{
    const QStringList codes = Country::knownCodes();
    return std::binary_search(codes.begin(), codes.end(), code);
}

} // namespace

struct Country::Private
{
    Country *const q;
    Property<QString> code { "code", q };

    /// The code if it is a known one; stored data may hold any text.
    [[nodiscard]] QString knownCode() const
    {
        const QString text = code.get();
        return isKnown(text) ? text : QString();
    }
};

Country::Country(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
    connect(this, &Country::codeChanged, this, &Country::updateInferredProperties);
}

Country::~Country() = default;

QStringList Country::knownCodes()
{
    static const QStringList codes = QString::fromLatin1(
#include <countrycodes.inc>
                                         )
                                         .split(QLatin1Char(' '));
    return codes;
}

QString Country::code() const
{
    return d->code.get();
}

bool Country::setCode(const QString &text)
{
    const QString code = text.toUpper();
    if (code == d->code.get()) {
        return false;
    }
    if (!isKnown(code)) {
        qCWarning(lcData, "Invalid country code: %s", qPrintable(text));
        return false;
    }
    return d->code.set(code);
}

void Country::updateInferredProperties()
{
    const QPointer<Country> self(this);
    for (const auto signal :
         { &Country::nameChanged, &Country::nativeNameChanged, &Country::flagChanged }) {
        if (self) {
            Q_EMIT(this->*signal)();
        }
    }
}

QString Country::name() const
{
    const QString code = d->knownCode();
    return code.isEmpty() ? code
                          : qtTrId((textids::countryNamePrefix + code.toLatin1()).constData());
}

QString Country::nativeName() const
{
    return qtcompat::nativeTerritoryName(d->knownCode());
}

QUrl Country::flag() const
{
    return flagOf(d->knownCode());
}

} // namespace vo::data

#include "moc_country.cpp"
