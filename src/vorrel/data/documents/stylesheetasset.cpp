// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/stylesheetasset.h>

namespace vo::data {

StyleSheetAsset::StyleSheetAsset(Context *context)
    : Asset(context)
{ }

StyleSheetAsset::~StyleSheetAsset() = default;

} // namespace vo::data

#include "moc_stylesheetasset.cpp"
