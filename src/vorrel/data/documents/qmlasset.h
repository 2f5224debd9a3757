// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>

namespace vo::data {

/// A QML component.
class VORREL_DATACORE_EXPORT QmlAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(QmlAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "qml")

public:
    explicit QmlAsset(Context *context);
    ~QmlAsset() override;
};

} // namespace vo::data
