// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/langstring.h>

#include <vorrel/data/properties/mapproperty.h>

#include <QtCore/QLocale>

namespace vo::data {

struct LangString::Private
{
    LangString *const q;
    MapProperty<QString> items { "items", q };
};

LangString::LangString(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

LangString::~LangString() = default;

QJsonObject LangString::items() const
{
    return d->items.object();
}

QString LangString::text(const QString &language) const
{
    return d->items.get().value(language);
}

bool LangString::setText(const QString &text, const QString &language)
{
    return d->items.set(language, text);
}

QString LangString::localeText() const
{
    const QString locale = QLocale().name();
    const QString languages[] { locale, locale.section(QLatin1Char('_'), 0, 0),
                                QStringLiteral("en"), QStringLiteral("de") };
    const QMap<QString, QString> texts = d->items.get();
    for (const QString &language : languages) {
        const QString text = texts.value(language);
        if (!text.isEmpty()) {
            return text;
        }
    }
    return {};
}

} // namespace vo::data

#include "moc_langstring.cpp"
