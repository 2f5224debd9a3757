// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/tag.h>
#include <vorrel/data/documents/taggroup.h>

namespace vo::data {

/// A tag for products, which may stand in a group of tags.
class VORREL_DATACORE_EXPORT ProductTag : public vo::data::Tag
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ProductTag)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "product")
    VO_PROPERTY(vo::data::TagGroup *, tagGroup, setTagGroup)
    Q_PROPERTY(vo::data::TagGroup *group READ tagGroup WRITE setTagGroup NOTIFY tagGroupChanged
                   STORED false)

public:
    explicit ProductTag(Context *context);
    ~ProductTag() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
