// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/util/utilexport.h>

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace vo::util {

/// The channel for application messages: things that a user should be told and that no return
/// value can carry. A sender posts a key with parameters and goes on; whoever listens turns the
/// key into a text. Nobody has to listen.
///
/// The one instance lives in the thread that first asks for it, normally the GUI thread, and ends
/// with the process. send() may be called from any thread; a listener gets the signal in its own.
class VORREL_UTIL_EXPORT Message : public QObject
{
    Q_OBJECT
public:
    /// The channel itself, to connect to sent().
    static Message *instance();

    /// Posts the message \p key, such as "vorrel.error.DependencyCycle".
    static void send(const QString &key, const QMap<QString, QVariant> &parameters);

Q_SIGNALS:
    void sent(const QString &key, const QMap<QString, QVariant> &parameters);

private:
    Message() = default;
};

} // namespace vo::util
