// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// An asset to be looked at.
class VORREL_DATACORE_EXPORT MediaAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAsset)
    QML_UNCREATABLE("Documents are made by a Context")

public:
    using vo::data::Asset::Asset;
    ~MediaAsset() override;
};

} // namespace vo::data
