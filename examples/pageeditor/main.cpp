// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// An editor for the blocks of a page, which are free-form data of one document. All of it is in
// the QML files.

#include "../kit/window.h"

int main(int argc, char *argv[])
{
    return showWindow(argc, argv, QStringLiteral("pageeditor"),
                      QStringLiteral("Edits the blocks of a page."));
}
