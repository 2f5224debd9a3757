// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/asset.h>
#include <vorrel/data/documents/mediaassetfolder.h>

namespace vo::data {

/// An asset to be looked at, which lies in a folder. To set \c parentFolder to null puts it into
/// the root.
class VORREL_DATACORE_EXPORT MediaAsset : public vo::data::Asset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    VO_PROPERTY(vo::data::MediaAssetFolder *, parentFolder, setParentFolder)

public:
    explicit MediaAsset(Context *context);
    ~MediaAsset() override;

    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
