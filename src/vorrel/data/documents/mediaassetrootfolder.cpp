// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaassetrootfolder.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/documents/mediaasset.h>

namespace vo::data {

MediaAssetRootFolder::MediaAssetRootFolder(Context *context)
    : MediaAssetFolder(context)
{ }

MediaAssetRootFolder::~MediaAssetRootFolder() = default;

QByteArray MediaAssetRootFolder::rootId()
{
    return QByteArrayLiteral("vorrel.folder.Root");
}

QString MediaAssetRootFolder::label() const
{
    return qtTrId(textids::mediaRootFolder);
}

Document::StorageFlags MediaAssetRootFolder::storageFlags() const
{
    return CreatedInternally;
}

} // namespace vo::data

#include "moc_mediaassetrootfolder.cpp"
