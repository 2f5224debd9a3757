// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMetaMethod>
#include <QtCore/QObject>

#include <functional>

namespace vo::test {

/// Calls a function inside a signal that is known by its name only, for tables of signals.
class SignalHook : public QObject
{
    Q_OBJECT
public:
    /// \pre \p sender has one signal called \p name
    SignalHook(const QObject *sender, const QByteArray &name, std::function<void()> function)
        : m_function(std::move(function))
    {
        const QMetaObject *meta = sender->metaObject();
        int index = 0;
        while (index < meta->methodCount() && meta->method(index).name() != name) {
            ++index;
        }
        const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("call()"));
        if (!connect(sender, meta->method(index), this, slot)) {
            qFatal("%s has no signal %s", meta->className(), name.constData());
        }
    }

private Q_SLOTS:
    void call() { m_function(); }

private:
    const std::function<void()> m_function;
};

/// The names of the signals that the class of \p metaObject itself declares.
[[nodiscard]] inline QList<QByteArray> signalNames(const QMetaObject &metaObject)
{
    QList<QByteArray> names;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        if (metaObject.method(i).methodType() == QMetaMethod::Signal) {
            names.append(metaObject.method(i).name());
        }
    }
    return names;
}

} // namespace vo::test
