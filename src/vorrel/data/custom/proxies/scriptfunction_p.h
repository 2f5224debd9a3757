// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtQml/QJSEngine>
#include <QtQml/QJSValue>

#include <memory>

namespace vo::data {

class DataRows;

/// A function of an application that answers questions about rows. Copies are the same function:
/// the first error that one of them meets is logged, and no other.
class ScriptFunction
{
public:
    ScriptFunction() = default;
    explicit ScriptFunction(const QJSValue &function);

    /// The same, ready to be called in the engine of \p owner.
    ScriptFunction(const ScriptFunction &function, const QObject *owner);

    [[nodiscard]] const QJSValue &value() const { return m_function; }
    [[nodiscard]] bool isCallable() const { return m_function.isCallable(); }

    /// What a function gets of a row: the value of \p role or, with -1, an object with the values
    /// of all roles by their names.
    [[nodiscard]] QJSValue argument(const DataRows &rows, int row, int role) const;

    /// Undefined after an error.
    [[nodiscard]] QJSValue call(const QJSValueList &arguments);

private:
    QJSValue m_function;
    QPointer<QJSEngine> m_engine;
    const char *m_ownerName = nullptr;
    std::shared_ptr<bool> m_hasFailed = std::make_shared<bool>(false);
};

} // namespace vo::data
