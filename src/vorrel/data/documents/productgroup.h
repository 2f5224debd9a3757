// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/group.h>

namespace vo::data {

/// A group of products.
class VORREL_DATACORE_EXPORT ProductGroup : public vo::data::Group
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ProductGroup)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "product")

public:
    explicit ProductGroup(Context *context);
    ~ProductGroup() override;
};

} // namespace vo::data
