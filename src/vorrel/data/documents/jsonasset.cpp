// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/jsonasset.h>

namespace vo::data {

JsonAsset::JsonAsset(Context *context)
    : Asset(context)
{ }

JsonAsset::~JsonAsset() = default;

} // namespace vo::data

#include "moc_jsonasset.cpp"
