// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

/// Registers all document classes and installs the texts of the library, in the language of
/// QLocale(), into the application; QML names come with the import of "vorrel.data.Core" 1.0,
/// before or after. Call it once at the start of a program; a Context and the QML plugin call it
/// too, and further calls do nothing. An application that has texts of its own for the ids of the
/// library installs its translator after the call.
extern "C" VORREL_DATACORE_EXPORT void _vo_data_registerTypesdata_core();
