// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/uiimageasset.h>

namespace vo::data {

UiImageAsset::UiImageAsset(Context *context)
    : Asset(context)
{ }

UiImageAsset::~UiImageAsset() = default;

} // namespace vo::data

#include "moc_uiimageasset.cpp"
