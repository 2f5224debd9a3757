// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/attachment.h>

#include "moc_attachment.cpp"
