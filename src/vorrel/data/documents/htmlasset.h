// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// A page of HTML.
class VORREL_DATACORE_EXPORT HtmlAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(HtmlAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "html")

public:
    explicit HtmlAsset(Context *context);
    ~HtmlAsset() override;
};

} // namespace vo::data
