// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/language.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/documents/flags_p.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QLocale>

#include <algorithm>

namespace vo::data {

struct Language::Private
{
    Language *const q;
    Property<QString> code { "code", q };
};

Language::Language(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Language::~Language() = default;

VO_DEFINE_PROPERTY(Language, QString, code, setCode)

QString Language::name() const
{
    const QString code = d->code.get();
    const QByteArray id = textids::languageNamePrefix + code.toLatin1();
    const QString name = qtTrId(id.constData());
    return name == QLatin1String(id) ? code : name;
}

QUrl Language::flag() const
{
    const QString territory = QLocale(d->code.get()).name().mid(3, 2);
    const bool isCountry =
        std::all_of(territory.begin(), territory.end(), [](QChar c) { return c.isUpper(); });
    return isCountry ? flagOf(territory) : QUrl();
}

} // namespace vo::data

#include "moc_language.cpp"
