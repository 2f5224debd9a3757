// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vo::test {

/// "text"_s is a QString; the source files are UTF-8.
inline QString operator""_s(const char *text, size_t size)
{
    return QString::fromUtf8(text, int(size));
}

/// "a b c"_l is the list of these words; ""_l is empty.
inline QStringList operator""_l(const char *text, size_t size)
{
    return QString::fromUtf8(text, int(size)).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The same for texts that hold blanks: "a b|c d"_lines.
inline QStringList operator""_lines(const char *text, size_t size)
{
    return QString::fromUtf8(text, int(size)).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

inline QJsonObject operator""_json(const char *text, size_t size)
{
    return QJsonDocument::fromJson(QByteArray(text, int(size))).object();
}

} // namespace vo::test
