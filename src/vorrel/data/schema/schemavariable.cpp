// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemavariable.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QRegularExpression>
#include <QtCore/QUuid>

namespace vo::data {

struct SchemaVariable::Private
{
    SchemaVariable *const q;
    Property<QString> uuid { "uuid", q };
    Property<QString> symbol { "symbol", q };
    Property<QString> name { "name", q };
};

SchemaVariable::SchemaVariable(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{
    connect(this, &SchemaVariable::nameChanged, this, &SchemaVariable::labelChanged);
}

SchemaVariable::~SchemaVariable() = default;

VO_DEFINE_READONLY_PROPERTY(SchemaVariable, QString, uuid)
VO_DEFINE_PROPERTY(SchemaVariable, QString, name, setName)
VO_DEFINE_READONLY_PROPERTY(SchemaVariable, QString, symbol)

bool SchemaVariable::setSymbol(const QString &symbol)
{
    static const QRegularExpression pattern(QStringLiteral("\\A[a-z][a-zA-Z0-9_]{2,63}\\z"));
    if (!pattern.match(symbol).hasMatch()) {
        qCWarning(lcSchema, "%s is not a valid symbolic name", qPrintable(symbol));
        return false;
    }
    return d->symbol.set(symbol);
}

QString SchemaVariable::label() const
{
    return name();
}

bool SchemaVariable::setLabel(const QString &label)
{
    return setName(label);
}

void SchemaVariable::setUuid(const QString &uuid)
{
    d->uuid.fromJson(uuid);
}

QString SchemaVariable::storedUuid() const
{
    return d->uuid.stored();
}

QString SchemaVariable::storedSymbol() const
{
    return d->symbol.stored();
}

void SchemaVariable::initialize()
{
    InlineDocument::initialize();
    if (storedUuid().isEmpty()) {
        setUuid(QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()));
    }
}

Document *SchemaVariable::linkedDocument(const QVariant & /*value*/) const
{
    return nullptr;
}

bool SchemaVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return a == b;
}

QVariant SchemaVariable::sanitize(const QVariant &value) const
{
    return value;
}

QVariant SchemaVariable::refuse(const QJsonObject &object) const
{
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    qCWarning(lcSchema, "Document %s: %s is no value of the variable %s of type %s",
              id().constData(), json.constData(), qPrintable(uuid()), qPrintable(type()));
    return defaultValue();
}

} // namespace vo::data

#include "moc_schemavariable.cpp"
