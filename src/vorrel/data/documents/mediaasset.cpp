// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaasset.h>

namespace vo::data {

MediaAsset::~MediaAsset() = default;

} // namespace vo::data

#include "moc_mediaasset.cpp"
