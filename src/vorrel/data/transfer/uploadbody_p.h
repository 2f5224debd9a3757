// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <memory>

namespace vo::data {

/// One PUT: a file, and where it goes.
struct TransferItem
{
    qint64 size; // bytes
    QByteArray contentType;
    QString fileName;
    QUrl url;
};

/// One attachment of a document that is to be uploaded.
struct AttachmentInfo
{
    bool present;    // the database has it with this document already
    qint64 size;     // bytes
    QByteArray hash; // lowercase hexadecimal: its name in the database
    QByteArray contentType;
    QString localFile;
    QUrl url; // in the database
};

/// The text of a document on its way to the database, in a temporary file that goes with this
/// object. No descriptor is kept: there may be thousands of these.
class UploadBody
{
public:
    UploadBody() = default;
    ~UploadBody();
    Q_DISABLE_COPY_MOVE(UploadBody)

    /// Writes the file. False with a critical line if that fails.
    bool write(const QByteArray &text);

    [[nodiscard]] const QString &fileName() const { return m_fileName; }

private:
    QString m_fileName; // empty: there is no file
};

/// Makes the text of a document with its attachments, and gives what is to be sent, in order:
/// attachments that go by themselves, then the document that names them. Small attachments go
/// inside the document, up to tuning::inlineAttachmentLimit of base64 text in all. Empty, with a
/// critical line, if the text cannot be written.
///
/// Runs on a thread of its own and touches no document.
QList<TransferItem> buildTransferItems(const QUrl &documentUrl, QJsonObject document,
                                       QList<AttachmentInfo> attachments, UploadBody &body);

} // namespace vo::data
