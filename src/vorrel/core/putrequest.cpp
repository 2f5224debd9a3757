// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/putrequest.h>

#include <vorrel/core/timelimits_p.h>

#include <QtCore/QIODevice>

namespace vo {

namespace {

/// Stands between the reply and the device that it uploads. A reply may read on after it was
/// aborted, when the device has gone; this one belongs to the reply.
class Body : public QIODevice
{
public:
    explicit Body(QIODevice *source)
        : m_source(source)
        , m_isSequential(source->isSequential())
        , m_start(m_isSequential ? 0 : source->pos())
        , m_size(source->size() - m_start)
    {
        connect(source, &QIODevice::readyRead, this, &QIODevice::readyRead);
        connect(source, &QIODevice::readChannelFinished, this, &QIODevice::readChannelFinished);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] bool isSequential() const override { return m_isSequential; }
    [[nodiscard]] qint64 size() const override { return m_size; }
    [[nodiscard]] qint64 bytesAvailable() const override
    {
        return m_isSequential && m_source ? m_source->bytesAvailable()
                                          : QIODevice::bytesAvailable();
    }
    bool seek(qint64 position) override
    {
        return QIODevice::seek(position) && m_source && m_source->seek(m_start + position);
    }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        return m_source ? m_source->read(data, maximum) : -1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QPointer<QIODevice> m_source;
    const bool m_isSequential;
    const qint64 m_start;
    const qint64 m_size;
};

} // namespace

PutRequest::PutRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                       QIODevice *body, QObject *parent)
    : Request(QNetworkAccessManager::PutOperation, request, manager, parent)
    , m_body(body)
{ }

PutRequest::~PutRequest() = default;

QNetworkReply *PutRequest::perform()
{
    if (!m_body || !m_body->isReadable()) {
        fail(QStringLiteral("The body is not open for reading"));
        return nullptr;
    }
    connect(m_body, &QObject::destroyed, this,
            [this] { fail(QStringLiteral("The body was destroyed")); });
    auto *body = new Body(m_body);
    QNetworkReply *reply = networkAccessManager()->put(networkRequest(), body);
    body->setParent(reply);
    return reply;
}

int PutRequest::timeout() const
{
    return timelimits::milliseconds(timelimits::transfer);
}

} // namespace vo

#include "moc_putrequest.cpp"
