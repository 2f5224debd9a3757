// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/datafield.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QRegularExpression>

namespace vo::data {

namespace {

bool isSymbol(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^[a-z_][a-zA-Z0-9_]*\\z"));
    return pattern.match(text).hasMatch();
}

/// Gives \p stored another symbol. False if it keeps the one it has.
bool replaceSymbol(QString &stored, const QString &symbol)
{
    if (symbol == stored) {
        return false;
    }
    if (!isSymbol(symbol)) {
        qCWarning(lcCustom, "\"%s\" is not a valid symbol name", qUtf8Printable(symbol));
        return false;
    }
    stored = symbol;
    return true;
}

} // namespace

DataField::DataField(QObject *parent)
    : QObject(parent)
{ }

DataField::~DataField() = default;

bool DataField::acceptsValue(LinkedDocument * /*document*/, const QVariant & /*value*/) const
{
    return true;
}

QString DataField::name() const
{
    return m_name;
}

void DataField::setName(const QString &name)
{
    const QString oldName = m_name;
    if (replaceSymbol(m_name, name)) {
        Q_EMIT nameChanged(this, oldName);
    }
}

QString DataField::alias() const
{
    return m_alias;
}

void DataField::setAlias(const QString &alias)
{
    const QString oldAlias = m_alias;
    if (replaceSymbol(m_alias, alias)) {
        Q_EMIT aliasChanged(this, oldAlias);
    }
}

bool DataField::hasAlias() const
{
    return !m_alias.isEmpty();
}

void DataField::requestReevaluation()
{
    Q_EMIT reevaluateRequested(this);
}

} // namespace vo::data

#include "moc_datafield.cpp"
