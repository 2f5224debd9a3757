// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QFont>
#include <QtQml/QQmlListProperty>

#include <type_traits>

/// What differs between Qt 5.15 and Qt 6, so that nothing else has to ask for the version.
namespace vo::data::qtcompat {

/// The index and count type of QQmlListProperty.
using ListSize =
    std::invoke_result_t<QQmlListProperty<QObject>::CountFunction, QQmlListProperty<QObject> *>;

/// Font weights are stored on the scale of Qt 5: 0 to 99, normal 50, bold 75.
int storedFontWeight(const QFont &font);
void setStoredFontWeight(QFont &font, int weight);

/// The CRC-16 of the bytes.
quint16 checksum(const QByteArray &bytes);

/// What its people call the country of a code of ISO 3166-1; empty if Qt does not know it.
QString nativeTerritoryName(const QString &code);

/// Qt 6 reads no image beyond a limit of its own, which is one for the whole program: after this it
/// is \p mebibytes at least. Qt 5 has none, as both have for 0.
void raiseImageAllocationLimit(int mebibytes);

} // namespace vo::data::qtcompat
