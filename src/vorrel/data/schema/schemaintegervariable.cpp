// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemaintegervariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/schema/boundedproperty_p.h>
#include <vorrel/data/schema/schemavalueform_p.h>

#include <cmath>
#include <limits>

namespace vo::data {

namespace {

const SchemaValueForm<qlonglong> &form()
{
    static const SchemaValueForm<qlonglong> form(QLatin1String("schemavalue:integer"),
                                                 jsonkeys::integer);
    return form;
}

constexpr qlonglong lowest = std::numeric_limits<qint32>::min();
constexpr qlonglong highest = std::numeric_limits<qint32>::max();

qlonglong toInteger(const QVariant &value)
{
    // Beyond these the conversion is undefined.
    constexpr double least = -9.2e18;
    constexpr double most = 9.2e18;
    const double number = value.toDouble();
    if (number < least || number > most) {
        return number < 0 ? std::numeric_limits<qlonglong>::min()
                          : std::numeric_limits<qlonglong>::max();
    }
    return std::isnan(number) ? 0 : value.toLongLong(); // 0 if that fails
}

} // namespace

struct SchemaIntegerVariable::Private
{
    SchemaIntegerVariable *const q;
    BoundedProperty<qint64> number { "integer", lowest, highest, q };
    Property<QString> unit { "unit", q };
};

SchemaIntegerVariable::SchemaIntegerVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaIntegerVariable::integerChanged, this,
            &SchemaVariable::defaultValueChanged);
}

SchemaIntegerVariable::~SchemaIntegerVariable() = default;

VO_DEFINE_PROPERTY(SchemaIntegerVariable, QString, unit, setUnit)

qlonglong SchemaIntegerVariable::integer() const
{
    return d->number.value.get();
}

bool SchemaIntegerVariable::setInteger(const qlonglong &value)
{
    return d->number.setValue(value);
}

qlonglong SchemaIntegerVariable::minimum() const
{
    return d->number.minimum.get();
}

bool SchemaIntegerVariable::setMinimum(const qlonglong &value)
{
    return d->number.setMinimum(value);
}

qlonglong SchemaIntegerVariable::maximum() const
{
    return d->number.maximum.get();
}

bool SchemaIntegerVariable::setMaximum(const qlonglong &value)
{
    return d->number.setMaximum(value);
}

void SchemaIntegerVariable::resetMinimum()
{
    setMinimum(lowest);
}

void SchemaIntegerVariable::resetMaximum()
{
    setMaximum(highest);
}

bool SchemaIntegerVariable::isMinimum(qlonglong value) const
{
    return vo::data::valuesEqual(value, minimum());
}

bool SchemaIntegerVariable::isMaximum(qlonglong value) const
{
    return vo::data::valuesEqual(value, maximum());
}

QVariant SchemaIntegerVariable::defaultValue() const
{
    return integer();
}

QVariant SchemaIntegerVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaIntegerVariable::toJson(const QVariant &value) const
{
    // As many bits as all readers of the stored form have for it.
    return form().toJson(qlonglong(value.toInt()));
}

bool SchemaIntegerVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaIntegerVariable::sanitize(const QVariant &value) const
{
    return d->number.bounded(toInteger(value));
}

} // namespace vo::data

#include "moc_schemaintegervariable.cpp"
