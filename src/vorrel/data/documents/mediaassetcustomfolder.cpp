// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaassetcustomfolder.h>

#include <vorrel/data/documents/childlist_p.h>
#include <vorrel/data/documents/mediaasset.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>

namespace vo::data {

struct MediaAssetCustomFolder::Private
{
    MediaAssetCustomFolder *const q;
    LinkedDocumentProperty<MediaAssetFolder> parentFolder { "parentFolder", q };
};

MediaAssetCustomFolder::MediaAssetCustomFolder(Context *context)
    : MediaAssetFolder(context)
    , d(new Private { this })
{ }

MediaAssetCustomFolder::~MediaAssetCustomFolder() = default;

MediaAssetFolder *MediaAssetCustomFolder::parentFolder() const
{
    return d->parentFolder.get();
}

bool MediaAssetCustomFolder::setParentFolder(MediaAssetFolder *folder)
{
    return d->parentFolder.set(folder ? folder : root(context()));
}

void MediaAssetCustomFolder::attachDocument(Document *document)
{
    const QPointer<Document> self(this);
    const QPointer<Document> target(document);
    MediaAssetFolder::attachDocument(document);
    if (self) {
        enterParent<MediaAssetFolder>(this, target, &MediaAssetFolder::folderMoved);
    }
}

void MediaAssetCustomFolder::detachDocument(Document *document)
{
    const QPointer<Document> self(this);
    const QPointer<Document> target(document);
    MediaAssetFolder::detachDocument(document);
    if (self) {
        leaveParent<MediaAssetFolder>(this, target, &MediaAssetFolder::folderMoved);
    }
}

} // namespace vo::data

#include "moc_mediaassetcustomfolder.cpp"
