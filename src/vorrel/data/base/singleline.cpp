// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/singleline_p.h>

#include <QtCore/QRegularExpression>

namespace vo::data {

QString singleLine(QString text)
{
    static const QRegularExpression lineBreak(QStringLiteral("\\r\\n|\\r|\\n"));
    return text.replace(lineBreak, QStringLiteral(" "));
}

} // namespace vo::data
