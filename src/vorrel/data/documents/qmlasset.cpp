// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/qmlasset.h>

namespace vo::data {

QmlAsset::QmlAsset(Context *context)
    : Asset(context)
{ }

QmlAsset::~QmlAsset() = default;

} // namespace vo::data

#include "moc_qmlasset.cpp"
