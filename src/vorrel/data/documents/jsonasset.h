// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// A file of JSON.
class VORREL_DATACORE_EXPORT JsonAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(JsonAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "json")

public:
    explicit JsonAsset(Context *context);
    ~JsonAsset() override;
};

} // namespace vo::data
