// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// An image of a user interface, which is used as it is: nothing is made of it.
class VORREL_DATACORE_EXPORT UiImageAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(UiImageAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "uiimage")

public:
    explicit UiImageAsset(Context *context);
    ~UiImageAsset() override;
};

} // namespace vo::data
