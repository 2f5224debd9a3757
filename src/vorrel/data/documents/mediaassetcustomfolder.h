// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaassetfolder.h>

namespace vo::data {

/// A folder of media that a user has made:
///
///     var folder = context.createDocument("mediaassetfolder")
///     folder.label = "Summer"
///     folder.parentFolder = null // in the root
class VORREL_DATACORE_EXPORT MediaAssetCustomFolder : public vo::data::MediaAssetFolder
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAssetCustomFolder)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_PROPERTY(vo::data::MediaAssetFolder *parentFolder READ parentFolder WRITE setParentFolder
                   NOTIFY parentFolderChanged)

public:
    explicit MediaAssetCustomFolder(Context *context);
    ~MediaAssetCustomFolder() override;

    [[nodiscard]] MediaAssetFolder *parentFolder() const override;

    /// Null means the root. False for a folder in this one, too.
    bool setParentFolder(MediaAssetFolder *folder);

    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

Q_SIGNALS:
    void parentFolderChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
