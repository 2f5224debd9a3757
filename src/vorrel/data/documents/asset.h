// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QUrl>

namespace vo::data {

/// A document whose main content is one file: its attachment "file".
class VORREL_DATACORE_EXPORT Asset : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Asset)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "asset")
    Q_PROPERTY(QUrl file READ file WRITE setFile NOTIFY fileChanged)
    VO_READONLY_PROPERTY(QString, fileName)
    Q_PROPERTY(QString hash READ hash NOTIFY fileChanged STORED false)
    VO_READONLY_PROPERTY(QString, originalHash)
    Q_PROPERTY(QString suffix READ suffix NOTIFY fileNameChanged STORED false)
    Q_PROPERTY(QString fileExt READ suffix NOTIFY fileNameChanged STORED false)
    Q_PROPERTY(QUrl localFile READ localFile NOTIFY localFileChanged STORED false)

public:
    explicit Asset(Context *context);
    ~Asset() override;

    /// The local file, or where the database has it; see AttachmentProperty::get().
    [[nodiscard]] QUrl file() const;

    /// Takes over the content and the name of a local file, as an edit. Any other URL, and a file
    /// that cannot be read, is refused with a critical log line.
    void setFile(const QUrl &localFile);

    /// The MD5 of the file in lower-case hexadecimal digits.
    [[nodiscard]] QString hash() const;

    /// What stands behind the last dot of the file name, without the dot.
    [[nodiscard]] QString suffix() const;

    /// The same as file(). If that is not local it is being fetched from now on: the Context is
    /// busy until that has worked, and localFileChanged() comes then.
    [[nodiscard]] QUrl localFile() const;

    /// The file name, if the document has no label of its own.
    [[nodiscard]] QString label() const override;

Q_SIGNALS:
    void fileChanged();
    void localFileChanged();

protected:
    /// An edit.
    void setFileName(const QString &name);

    /// The last step of setFile(): the file of this \p hash, in 16 bytes, is in the store.
    virtual void setFile(const QByteArray &hash, const QByteArray &mimeType);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
