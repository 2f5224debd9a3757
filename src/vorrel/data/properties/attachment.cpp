// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/attachment.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/downloadprogress.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/attachmentrequest_p.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtQml/QQmlEngine>

namespace vo::data {

Attachment::Attachment(AttachmentProperty *property)
    : QObject(property->d_())
    , m_property(property)
    , m_store(documentStore(property->d_()->context()))
{
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
    if (property->signal().isValid()) {
        connect(property->d_(), property->signal(), this,
                QMetaMethod::fromSignal(&Attachment::hashChanged));
    }
    connect(this, &Attachment::hashChanged, this, &Attachment::reset);
}

Attachment::~Attachment()
{
    if (m_property) {
        m_property->m_attachment = nullptr;
    }
    cancel();
}

QString Attachment::name() const
{
    return m_property ? QString::fromLatin1(m_property->name()) : QString();
}

bool Attachment::isLocal() const
{
    return AttachmentStore::contains(rawHash());
}

QString Attachment::hash() const
{
    return QString::fromLatin1(rawHash().toHex());
}

QByteArray Attachment::rawHash() const
{
    return m_property ? m_property->rawHash() : QByteArray();
}

QByteArray Attachment::mimeType() const
{
    return m_property ? m_property->mimeType() : QByteArray();
}

bool Attachment::hasFile() const
{
    return AttachmentStore::isHash(rawHash());
}

QUrl Attachment::url() const
{
    return isLocal() ? localUrl() : remoteUrl();
}

QUrl Attachment::remoteUrl() const
{
    return hasFile() ? document()->attachmentUrl(m_property->hash()) : QUrl();
}

QString Attachment::localPath() const
{
    return AttachmentStore::pathForHash(rawHash());
}

QUrl Attachment::localUrl() const
{
    const QString path = localPath();
    return path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path);
}

qlonglong Attachment::size() const
{
    return m_property ? m_property->size() : 0;
}

Attachment::UsageFlags Attachment::usageFlags() const
{
    return m_property ? m_property->usageFlags() : UsageFlags(NoUse);
}

Document *Attachment::document() const
{
    return m_property ? m_property->d_() : nullptr;
}

QSharedPointer<DownloadProgress> Attachment::downloadStatus() const
{
    return m_progress;
}

// Download

void Attachment::download()
{
    if (m_request || !hasFile() || isLocal()) {
        return;
    }
    m_request =
        new AttachmentRequest(remoteUrl(), rawHash(), localPath(), m_store.networkManager(), this);
    m_request->setSuppressErrors(m_failed); // it is logged once, however often it is tried again
    connect(m_request, &Request::finished, this, &Attachment::requestFinished);
    connect(m_request, &Request::downloadProgress, this, &Attachment::updateDownloadProgress);
    m_progress = m_store.beginDownload();
    m_progress->total = size();
}

void Attachment::updateDownloadProgress(qint64 done, qint64 total)
{
    m_progress->received = done;
    if (total > 0) {
        m_progress->total = total;
    }
    Q_EMIT downloadProgress(done, m_progress->total);
}

void Attachment::requestFinished()
{
    // Idle before anybody hears of it, so that a slot may try again.
    AttachmentRequest *request = std::exchange(m_request, nullptr);
    endDownload();
    const bool success = request->isOk(200) && request->commit();
    m_failed = !success;
    const QPointer<Attachment> self(this);
    Q_EMIT downloadFinished(success);
    if (self && success) {
        Q_EMIT localChanged();
    }
    if (self && success) {
        Q_EMIT urlChanged();
    }
}

// The signal that leads here may come without another hash, for instance when access changes.
void Attachment::reset()
{
    m_failed = false;
    if (m_request && m_request->hash() != rawHash()) {
        cancel();
        download();
    }
    const QPointer<Attachment> self(this);
    Q_EMIT localChanged();
    if (self) {
        Q_EMIT urlChanged();
    }
}

void Attachment::cancel()
{
    if (m_request) {
        m_request->disconnect(this);
        m_request->setSuppressErrors(true); // it is no failure
        m_request->abort();
        m_request.clear();
    }
    endDownload();
}

void Attachment::endDownload()
{
    if (m_progress) {
        m_store.endDownload(m_progress);
        m_progress.reset();
    }
}

} // namespace vo::data

#include "moc_attachment.cpp"
