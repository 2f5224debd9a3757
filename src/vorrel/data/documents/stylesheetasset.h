// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// A style sheet.
class VORREL_DATACORE_EXPORT StyleSheetAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StyleSheetAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "stylesheet")

public:
    explicit StyleSheetAsset(Context *context);
    ~StyleSheetAsset() override;
};

} // namespace vo::data
