// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/getrequest.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QSaveFile>

namespace vo::data {

/// Where the bytes of a download go: into a file of the store that has no name yet, and through the
/// digest. The file is opened by the first byte, since hundreds of downloads may wait for their
/// connections.
class AttachmentSink : public QIODevice
{
public:
    explicit AttachmentSink(const QString &path);

    [[nodiscard]] bool isSequential() const override { return true; }

    /// Gives the file its name, if its digest is \p hash.
    bool commit(const QByteArray &hash);

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool openFile();

    QSaveFile m_file;
    QCryptographicHash m_digest { QCryptographicHash::Md5 };
};

/// The download of one attachment straight into the store, behind everything that is more urgent.
class AttachmentRequest : public GetRequest
{
public:
    /// \p path is where the store has files of this \p hash.
    AttachmentRequest(const QUrl &url, const QByteArray &hash, const QString &path,
                      QNetworkAccessManager *manager, QObject *parent);

    /// Of the content that is wanted, in 16 bytes.
    [[nodiscard]] QByteArray hash() const { return m_hash; }

    /// Makes what has come a file of the store. False, with a critical log line, if it is not what
    /// was wanted or cannot be written. \pre isOk(200)
    bool commit() { return m_sink.commit(m_hash); }

protected:
    void prepare() override;

private:
    const QByteArray m_hash;
    AttachmentSink m_sink;
};

} // namespace vo::data
