// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/signalhook.h"

#include <QtCore/QMetaMethod>

namespace vo::test {

SignalHook::SignalHook(const QObject *sender, const QByteArray &name,
                       std::function<void()> function)
    : m_function(std::move(function))
{
    const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("call()"));
    const QMetaObject *meta = sender->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Signal && method.name() == name) {
            connect(sender, method, this, slot);
            return;
        }
    }
    qFatal("%s has no signal %s", meta->className(), name.constData());
}

QList<QByteArray> signalNames(const QMetaObject &metaObject)
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

#include "moc_signalhook.cpp"
