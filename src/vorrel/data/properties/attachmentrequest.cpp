// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/attachmentrequest_p.h>

#include <vorrel/data/base/durablefile_p.h>
#include <vorrel/data/base/logging_p.h>

namespace vo::data {

namespace {

QNetworkRequest networkRequest(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setRawHeader("Accept", "*/*");
    request.setPriority(QNetworkRequest::LowPriority);
    return request;
}

} // namespace

AttachmentSink::AttachmentSink(const QString &path)
    : m_file(path)
{ }

bool AttachmentSink::openFile()
{
    if (m_file.isOpen() || durablefile::open(m_file)) {
        return true;
    }
    setErrorString(m_file.errorString());
    return false;
}

qint64 AttachmentSink::readData(char * /*data*/, qint64 /*maximum*/)
{
    return -1;
}

qint64 AttachmentSink::writeData(const char *data, qint64 size)
{
    if (!openFile()) {
        return -1;
    }
    m_digest.addData(QByteArray::fromRawData(data, int(size)));
    const qint64 written = m_file.write(data, size);
    setErrorString(m_file.errorString());
    return written;
}

bool AttachmentSink::commit(const QByteArray &hash)
{
    const QByteArray digest = m_digest.result();
    if (digest != hash) {
        qCCritical(lcAttachmentStore, "The attachment %s arrived with the digest %s",
                   hash.toHex().constData(), digest.toHex().constData());
        return false;
    }
    if (!openFile() || !durablefile::commit(m_file)) {
        qCCritical(lcAttachmentStore, "Failed to store the attachment %s: %s",
                   hash.toHex().constData(), qPrintable(m_file.errorString()));
        return false;
    }
    return true;
}

AttachmentRequest::AttachmentRequest(const QUrl &url, const QByteArray &hash, const QString &path,
                                     QNetworkAccessManager *manager, QObject *parent)
    : GetRequest(data::networkRequest(url), manager, parent)
    , m_hash(hash)
    , m_sink(path)
{ }

void AttachmentRequest::prepare()
{
    m_sink.open(QIODevice::WriteOnly);
    setDataSink(&m_sink);
}

} // namespace vo::data
