// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QUrl>

namespace vo::data {

/// Where an application has the flag of a country, given by its code. Empty for none.
[[nodiscard]] inline QUrl flagOf(const QString &country)
{
    return country.isEmpty()
        ? QUrl()
        : QUrl(QStringLiteral("qrc:/data/lib/images/flags/%1.svg").arg(country));
}

} // namespace vo::data
