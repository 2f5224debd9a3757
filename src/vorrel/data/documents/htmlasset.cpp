// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/htmlasset.h>

namespace vo::data {

HtmlAsset::HtmlAsset(Context *context)
    : Asset(context)
{ }

HtmlAsset::~HtmlAsset() = default;

} // namespace vo::data

#include "moc_htmlasset.cpp"
