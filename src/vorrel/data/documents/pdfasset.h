// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaasset.h>

namespace vo::data {

/// A PDF document. The library does not look into it: an application that can sets the number of
/// pages and a picture of the first one.
class VORREL_DATACORE_EXPORT PdfAsset : public vo::data::MediaAsset
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PdfAsset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "pdf")
    Q_PROPERTY(QUrl thumbnail READ thumbnail WRITE setThumbnail NOTIFY thumbnailChanged)
    VO_PROPERTY(int, pageCount, setPageCount)

public:
    explicit PdfAsset(Context *context);
    ~PdfAsset() override;

    /// Takes the file of this \p hash, in 16 bytes, which is in the attachment store.
    void setPdf(const QByteArray &hash);

    [[nodiscard]] QUrl thumbnail() const;

    /// Takes over a local image file, as an edit. What cannot be read is refused with a critical
    /// log line.
    void setThumbnail(const QUrl &localFile);

Q_SIGNALS:
    void thumbnailChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
