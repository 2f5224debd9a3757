// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

/// Registers all document classes; their QML names come with the import of "vorrel.data.Core" 1.0,
/// before or after. Call it once at the start of a program; a Context and the QML plugin call it
/// too, and further calls do nothing.
extern "C" VORREL_DATACORE_EXPORT void _vo_data_registerTypesdata_core();
