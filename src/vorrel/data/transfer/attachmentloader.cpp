// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/transfer/attachmentloader.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/downloadprogress.h>
#include <vorrel/data/properties/attachment.h>

#include <algorithm>

namespace vo::data {

namespace {

double part(qint64 done, qint64 total)
{
    return total > 0 ? std::clamp(double(done) / double(total), 0.0, 1.0) : 0;
}

} // namespace

AttachmentLoader::AttachmentLoader(QObject *parent)
    : QObject(parent)
    , m_property(QStringLiteral("file"))
{ }

AttachmentLoader::~AttachmentLoader() = default;

void AttachmentLoader::classBegin()
{
    m_building = true;
}

void AttachmentLoader::componentComplete()
{
    m_building = false;
    choose();
}

// What is loaded

Document *AttachmentLoader::document() const
{
    return m_document;
}

void AttachmentLoader::setDocument(Document *document)
{
    if (document == m_document) {
        return;
    }
    disconnect(m_documentEnd);
    m_document = document;
    if (document) {
        m_documentEnd =
            connect(document, &QObject::destroyed, this, &AttachmentLoader::documentChanged);
    }
    const QPointer<AttachmentLoader> self(this);
    Q_EMIT documentChanged();
    if (self) {
        choose();
    }
}

QString AttachmentLoader::property() const
{
    return m_property;
}

void AttachmentLoader::setProperty(const QString &property)
{
    if (property == m_property) {
        return;
    }
    m_property = property;
    const QPointer<AttachmentLoader> self(this);
    Q_EMIT propertyChanged();
    if (self) {
        choose();
    }
}

Attachment *AttachmentLoader::attachment() const
{
    return m_attachment;
}

void AttachmentLoader::setAttachment(Attachment *attachment)
{
    m_given = attachment;
    choose();
}

void AttachmentLoader::choose()
{
    Attachment *attachment = target();
    if (!m_building && attachment != m_attachment) {
        follow(attachment);
    }
}

Attachment *AttachmentLoader::target() const
{
    return m_given || !m_document ? m_given.data() : m_document->attachment(m_property);
}

void AttachmentLoader::follow(Attachment *attachment)
{
    for (const QMetaObject::Connection &connection : std::exchange(m_connections, {})) {
        disconnect(connection);
    }
    m_attachment = attachment;
    m_failed = false;
    using Loader = AttachmentLoader;
    if (Document *owner = attachment ? attachment->document() : nullptr) {
        m_connections = {
            connect(attachment, &Attachment::urlChanged, this, &Loader::reload),
            connect(attachment, &Attachment::downloadProgress, this, &Loader::update),
            connect(attachment, &Attachment::downloadFinished, this, &Loader::downloadFinished),
            connect(attachment, &QObject::destroyed, this, [this] { follow(target()); }),
            connect(owner, &Document::accessLevelChanged, this, &Loader::update),
            connect(owner->context(), &Context::tryFixTriggered, this, &Loader::reload),
        };
    }
    const QPointer<AttachmentLoader> self(this);
    Q_EMIT attachmentChanged();
    if (self) {
        update();
    }
}

// How far it is

void AttachmentLoader::reload()
{
    m_failed = false;
    update();
}

void AttachmentLoader::downloadFinished(bool success)
{
    if (!success) { // else the URL changes
        m_failed = true;
        update();
    }
}

void AttachmentLoader::update()
{
    const Document *owner = m_attachment ? m_attachment->document() : nullptr;
    if (!owner || owner->accessLevel() < Document::ReadAccess || !m_attachment->hasFile()) {
        setState({});
    } else if (m_attachment->isLocal()) {
        setState({ Ready, m_attachment->localUrl(), 1 });
    } else if (m_failed) {
        setState({ Error, {}, 0 });
    } else {
        m_attachment->download(); // if it is not under way
        const auto download = m_attachment->downloadStatus();
        setState({ Loading, {}, download ? part(download->received, download->total) : 0 });
    }
}

// All answers are right before anybody hears of one.
void AttachmentLoader::setState(const State &state)
{
    const State former = std::exchange(m_state, state);
    const QPointer<AttachmentLoader> self(this);
    if (former.url != state.url) {
        Q_EMIT urlChanged();
    }
    if (self && former.progress != state.progress) {
        Q_EMIT progressChanged();
    }
    if (self && (former.status == Error) != (state.status == Error)) {
        Q_EMIT errorChanged();
    }
    if (self && former.status != state.status) {
        Q_EMIT statusChanged();
    }
}

QUrl AttachmentLoader::url() const
{
    return m_state.url;
}

AttachmentLoader::Status AttachmentLoader::status() const
{
    return m_state.status;
}

double AttachmentLoader::progress() const
{
    return m_state.progress;
}

QString AttachmentLoader::error() const
{
    return m_state.status == Error ? qtTrId(textids::attachmentError) : QString();
}

} // namespace vo::data

#include "moc_attachmentloader.cpp"
