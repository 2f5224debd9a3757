// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The main function of an example that is all QML: opens the window of qrc:/<name>/Main.qml, or
/// draws it into a file. Its root has the properties serviceUrl, database and picture, which come
/// from the command line.
int showWindow(int argc, char *argv[], const QString &name, const QString &description);
