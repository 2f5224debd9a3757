// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/message.h>

namespace vo::util {

Message *Message::instance()
{
    static Message message;
    return &message;
}

void Message::send(const QString &key, const QMap<QString, QVariant> &parameters)
{
    Q_EMIT instance()->sent(key, parameters);
}

} // namespace vo::util

#include "moc_message.cpp"
