// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaassetfolder.h>

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/documents/childlist_p.h>
#include <vorrel/data/documents/mediaasset.h>
#include <vorrel/data/documents/mediaassetrootfolder.h>

namespace vo::data {

struct MediaAssetFolder::Private
{
    ChildList<MediaAssetFolder> folders;
    ChildList<MediaAsset> assets;
};

MediaAssetFolder::MediaAssetFolder(Context *context)
    : LinkedDocument(context)
    , d(new Private)
{ }

MediaAssetFolder::~MediaAssetFolder() = default;

MediaAssetFolder *MediaAssetFolder::root(const Context *context)
{
    const DocumentNode *node = documentStore(context).documentNode(MediaAssetRootFolder::rootId());
    LinkedDocument *document = node ? node->document() : nullptr;
    return document && !document->deleted() ? qobject_cast<MediaAssetFolder *>(document) : nullptr;
}

MediaAssetFolder *MediaAssetFolder::parentFolder() const
{
    return nullptr;
}

QList<MediaAssetFolder *> MediaAssetFolder::childFolders() const
{
    return d->folders.of(
        this, [this](const MediaAssetFolder *folder) { return folder->parentFolder() == this; });
}

QList<MediaAsset *> MediaAssetFolder::assets() const
{
    return d->assets.of(this,
                        [this](const MediaAsset *asset) { return asset->parentFolder() == this; });
}

QQmlListProperty<MediaAssetFolder> MediaAssetFolder::childFolderList()
{
    return ReadOnlyObjectList<MediaAssetFolder>::property(this, [](QObject *folder) {
        return static_cast<MediaAssetFolder *>(folder)->childFolders();
    });
}

QQmlListProperty<MediaAsset> MediaAssetFolder::assetList()
{
    return ReadOnlyObjectList<MediaAsset>::property(
        this, [](QObject *folder) { return static_cast<MediaAssetFolder *>(folder)->assets(); });
}

void MediaAssetFolder::folderMoved()
{
    d->folders.invalidate();
    Q_EMIT childFoldersChanged();
}

void MediaAssetFolder::assetMoved()
{
    d->assets.invalidate();
    Q_EMIT assetsChanged();
}

} // namespace vo::data

#include "moc_mediaassetfolder.cpp"
