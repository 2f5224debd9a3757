// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemastringvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/singleline_p.h>
#include <vorrel/data/properties/langstring.h>
#include <vorrel/data/properties/property.h>

namespace vo::data {

namespace {

// Other languages, and that of the Context, are not looked at: stored values have this one.
constexpr QLatin1String storedLanguage("de");

} // namespace

struct SchemaStringVariable::Private
{
    SchemaStringVariable *const q;
    Property<QString> string { "string", q };
    Property<bool> multiline { "multiline", q };
};

SchemaStringVariable::SchemaStringVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaStringVariable::stringChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaStringVariable::~SchemaStringVariable() = default;

VO_DEFINE_PROPERTY(SchemaStringVariable, QString, string, setString)
VO_DEFINE_PROPERTY(SchemaStringVariable, bool, multiline, setMultiline)

QVariant SchemaStringVariable::defaultValue() const
{
    return string();
}

QVariant SchemaStringVariable::fromJson(const QJsonObject &object) const
{
    const QJsonValue items = object.value(jsonkeys::string).toObject().value(jsonkeys::items);
    const QJsonValue text = items.toObject().value(storedLanguage);
    const bool isText = text.isString() || (items.isObject() && text.isUndefined());
    return isText ? QVariant(text.toString()) : refuse(object);
}

QJsonObject SchemaStringVariable::toJson(const QVariant &value) const
{
    // Copied, which is faster than to make them for each value.
    static const QJsonObject textFrame { { jsonkeys::type, typeOf(LangString::staticMetaObject) } };
    static const QJsonObject frame { { jsonkeys::type, QLatin1String("schemavalue:string") } };
    QJsonObject items;
    items.insert(storedLanguage, value.toString());
    QJsonObject text = textFrame;
    text.insert(jsonkeys::items, items);
    QJsonObject object = frame;
    object.insert(jsonkeys::string, text);
    return object;
}

bool SchemaStringVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return a.isValid() == b.isValid() && a.toString() == b.toString();
}

QVariant SchemaStringVariable::sanitize(const QVariant &value) const
{
    return d->multiline.stored() ? value : singleLine(value.toString());
}

} // namespace vo::data

#include "moc_schemastringvariable.cpp"
