// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/scriptfunction_p.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/custom/proxies/datarows.h>

#include <utility>

namespace vo::data {

ScriptFunction::ScriptFunction(const QJSValue &function)
    : m_function(function)
{ }

ScriptFunction::ScriptFunction(const ScriptFunction &function, const QObject *owner)
    : m_function(function.m_function)
    , m_engine(qjsEngine(owner))
    , m_ownerName(owner->metaObject()->className())
    , m_hasFailed(function.m_hasFailed)
{ }

QJSValue ScriptFunction::argument(const DataRows &rows, int row, int role) const
{
    if (!m_engine) {
        return {};
    }
    if (role >= 0) {
        return m_engine->toScriptValue(rows.value(row, role));
    }
    QJSValue object = m_engine->newObject();
    const QHash<int, QByteArray> names = rows.model()->roleNames();
    for (auto it = names.begin(); it != names.end(); ++it) {
        object.setProperty(QString::fromUtf8(it.value()),
                           m_engine->toScriptValue(rows.value(row, it.key())));
    }
    return object;
}

QJSValue ScriptFunction::call(const QJSValueList &arguments)
{
    if (!m_engine) {
        return {};
    }
    QJSValue result = m_function.call(arguments);
    if (!result.isError()) {
        return result;
    }
    if (!std::exchange(*m_hasFailed, true)) {
        qCWarning(lcCustom, "The function of a %s failed: %s (%s, line %d)", m_ownerName,
                  qUtf8Printable(result.toString()),
                  qUtf8Printable(result.property(QStringLiteral("fileName")).toString()),
                  result.property(QStringLiteral("lineNumber")).toInt());
    }
    return {};
}

} // namespace vo::data
