// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

// Qt 6 names with it the header of a class that a property only points to; Qt 5 does not need it.
#ifndef Q_MOC_INCLUDE
#define Q_MOC_INCLUDE(header)
#endif
