// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/group.h>

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/documents/childlist_p.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>

#include <QtCore/QSet>

namespace vo::data {

struct Group::Private
{
    Group *const q;
    LinkedDocumentProperty<Group> parentGroup { "parentGroup", q };
    ChildList<Group> children {};
};

Group::Group(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Group::~Group() = default;

VO_DEFINE_PROPERTY(Group, vo::data::Group *, parentGroup, setParentGroup)

bool Group::acceptsParentGroup(Group *group) const
{
    if (!group) {
        return true;
    }
    if (!group->hasType(type())) {
        return false;
    }
    // Stored groups may form a circle that this one is not on.
    QSet<const Group *> seen;
    for (const Group *ancestor = group; ancestor && !seen.contains(ancestor);
         ancestor = ancestor->parentGroup()) {
        if (ancestor == this) {
            return false;
        }
        seen.insert(ancestor);
    }
    return true;
}

QList<Group *> Group::childGroups() const
{
    return d->children.of(this,
                          [this](const Group *group) { return group->parentGroup() == this; });
}

QQmlListProperty<Group> Group::childGroupList()
{
    return ReadOnlyObjectList<Group>::property(
        this, [](QObject *group) { return static_cast<Group *>(group)->childGroups(); });
}

void Group::childMoved()
{
    d->children.invalidate();
    Q_EMIT childGroupsChanged();
}

// The parent group learns of its children by their links.

void Group::attachDocument(Document *document)
{
    const QPointer<Group> self(this);
    const QPointer<Document> target(document);
    LinkedDocument::attachDocument(document);
    if (self) {
        enterParent<Group>(this, target, &Group::childMoved);
    }
}

void Group::detachDocument(Document *document)
{
    const QPointer<Group> self(this);
    const QPointer<Document> target(document);
    LinkedDocument::detachDocument(document);
    if (self) {
        leaveParent<Group>(this, target, &Group::childMoved);
    }
}

} // namespace vo::data

#include "moc_group.cpp"
