// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/group.h>

namespace vo::data {

/// A group of tags.
class VORREL_DATACORE_EXPORT TagGroup : public vo::data::Group
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TagGroup)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "tag")

public:
    explicit TagGroup(Context *context);
    ~TagGroup() override;
};

} // namespace vo::data
