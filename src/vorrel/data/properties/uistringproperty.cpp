// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/uistringproperty.h>

#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

namespace vo::data {

UiStringProperty::UiStringProperty(const char *name, Document *document)
    : PropertyBase(name, document)
{ }

QString UiStringProperty::get() const
{
    if (!canRead()) {
        return {};
    }
    const QString locale = QLocale().name();
    const QString text = m_texts.value(locale);
    if (!text.isEmpty()) {
        return text;
    }
    const QString languageText = m_texts.value(locale.section(QLatin1Char('_'), 0, 0));
    return languageText.isEmpty() ? m_texts.value(QStringLiteral("_")) : languageText;
}

QString UiStringProperty::value(const QString &key) const
{
    return m_texts.value(key);
}

bool UiStringProperty::contains(const QString &key) const
{
    return m_texts.contains(key);
}

void UiStringProperty::insert(const QString &key, const QString &text)
{
    const auto present = m_texts.constFind(key);
    if (!canWrite() || (present != m_texts.constEnd() && *present == text)) {
        return;
    }
    m_texts.insert(key, text);
    markDirtyAndNotify();
}

bool UiStringProperty::remove(const QString &key)
{
    if (!canWrite() || m_texts.remove(key) == 0) {
        return false;
    }
    markDirtyAndNotify();
    return true;
}

void UiStringProperty::clear()
{
    if (!canWrite()) {
        return;
    }
    m_texts.clear();
    markDirtyAndNotify();
}

int UiStringProperty::type() const
{
    return Value;
}

void UiStringProperty::fromJson(const QJsonValue &json)
{
    m_texts.clear();
    const QJsonObject object = json.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        m_texts.insert(it.key(), it.value().toString());
    }
    notify();
}

QJsonValue UiStringProperty::toJson() const
{
    QJsonObject object;
    for (auto it = m_texts.begin(); it != m_texts.end(); ++it) {
        object.insert(it.key(), it.value());
    }
    return object;
}

void UiStringProperty::copy(PropertyBase *source)
{
    m_texts = static_cast<UiStringProperty *>(source)->m_texts;
    notify();
}

} // namespace vo::data
