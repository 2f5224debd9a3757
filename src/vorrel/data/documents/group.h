// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// A node of a tree that sorts documents. The base of the groups of products and of tags.
class VORREL_DATACORE_EXPORT Group : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Group)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "group")
    VO_PROPERTY(vo::data::Group *, parentGroup, setParentGroup)
    Q_PROPERTY(QQmlListProperty<vo::data::Group> childGroups READ childGroupList NOTIFY
                   childGroupsChanged STORED false)

public:
    explicit Group(Context *context);
    ~Group() override;

    /// Whether \p group may become the parent: null, or a group of this type that does not lie
    /// below this one.
    Q_INVOKABLE [[nodiscard]] bool acceptsParentGroup(vo::data::Group *group) const;

    /// The groups whose parent this is, as far as they have been built, by id.
    [[nodiscard]] QList<Group *> childGroups() const;
    [[nodiscard]] QQmlListProperty<Group> childGroupList();

    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

Q_SIGNALS:
    void childGroupsChanged();

private:
    void childMoved();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
