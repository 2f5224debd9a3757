// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// A file of JavaScript.
class VORREL_DATACORE_EXPORT ScriptAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ScriptAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "script")

public:
    explicit ScriptAsset(Context *context);
    ~ScriptAsset() override;
};

} // namespace vo::data
