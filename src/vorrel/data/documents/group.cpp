// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/group.h>

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>

#include <QtCore/QPointer>
#include <QtCore/QSet>

#include <algorithm>

namespace vo::data {

struct Group::Private
{
    Group *const q;
    LinkedDocumentProperty<Group> parentGroup { "parentGroup", q };
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
    QList<Group *> groups;
    const QList<Document *> referencing = referencingDocuments();
    for (Document *document : referencing) {
        auto *group = qobject_cast<Group *>(document);
        if (group && !group->deleted() && group->parentGroup() == this) {
            groups.append(group);
        }
    }
    std::sort(groups.begin(), groups.end(),
              [](const Group *a, const Group *b) { return a->id() < b->id(); });
    return groups;
}

QQmlListProperty<Group> Group::childGroupList()
{
    return ReadOnlyObjectList<Group>::property(
        this, [](QObject *group) { return static_cast<Group *>(group)->childGroups(); });
}

// The parent group learns of its children by their links.

void Group::attachDocument(Document *document)
{
    const QPointer<Group> target(qobject_cast<Group *>(document));
    LinkedDocument::attachDocument(document);
    if (target) {
        Q_EMIT target->childGroupsChanged();
    }
}

void Group::detachDocument(Document *document)
{
    const QPointer<Group> target(qobject_cast<Group *>(document));
    LinkedDocument::detachDocument(document);
    if (target) {
        Q_EMIT target->childGroupsChanged();
    }
}

} // namespace vo::data

#include "moc_group.cpp"
