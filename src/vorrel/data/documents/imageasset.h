// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaasset.h>

#include <QtCore/QSize>

namespace vo::data {

/// An image. Its size is in pixels, of the last file set that could be read.
class VORREL_DATACORE_EXPORT ImageAsset : public vo::data::MediaAsset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "image")
    VO_READONLY_PROPERTY(QSize, size)

public:
    using MediaAsset::setFile;

    explicit ImageAsset(Context *context);
    ~ImageAsset() override;

protected:
    void setFile(const QByteArray &hash, const QByteArray &mimeType) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
