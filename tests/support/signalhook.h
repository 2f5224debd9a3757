// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <functional>

namespace vo::test {

/// Calls a function inside a signal that is known by its name only, for tables of signals.
class SignalHook : public QObject
{
    Q_OBJECT
public:
    /// \pre \p sender has one signal called \p name
    SignalHook(const QObject *sender, const QByteArray &name, std::function<void()> function);

private Q_SLOTS:
    void call() { m_function(); }

private:
    const std::function<void()> m_function;
};

/// The names of the signals that the class of \p metaObject itself declares.
[[nodiscard]] QList<QByteArray> signalNames(const QMetaObject &metaObject);

} // namespace vo::test
