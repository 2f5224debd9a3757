// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// A browser for the sample content of database/. All of it is in the QML files.

#include "../kit/window.h"

int main(int argc, char *argv[])
{
    return showWindow(argc, argv, QStringLiteral("catalog"),
                      QStringLiteral("Shows the sample catalogue of a database."));
}
