// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaasset.h>

#include <vorrel/data/documents/childlist_p.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>

namespace vo::data {

struct MediaAsset::Private
{
    MediaAsset *const q;
    LinkedDocumentProperty<MediaAssetFolder> parentFolder { "parentFolder", q };
};

MediaAsset::MediaAsset(Context *context)
    : Asset(context)
    , d(new Private { this })
{ }

MediaAsset::~MediaAsset() = default;

MediaAssetFolder *MediaAsset::parentFolder() const
{
    return d->parentFolder.get();
}

// Null means the root.
bool MediaAsset::setParentFolder(MediaAssetFolder *const &folder)
{
    return d->parentFolder.set(folder ? folder : MediaAssetFolder::root(context()));
}

void MediaAsset::attachDocument(Document *document)
{
    const QPointer<Document> self(this);
    const QPointer<Document> target(document);
    Asset::attachDocument(document);
    if (self) {
        enterParent<MediaAssetFolder>(this, target, &MediaAssetFolder::assetMoved);
    }
}

void MediaAsset::detachDocument(Document *document)
{
    const QPointer<Document> self(this);
    const QPointer<Document> target(document);
    Asset::detachDocument(document);
    if (self) {
        leaveParent<MediaAssetFolder>(this, target, &MediaAssetFolder::assetMoved);
    }
}

} // namespace vo::data

#include "moc_mediaasset.cpp"
