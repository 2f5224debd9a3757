// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/transfer/uploadbody_p.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryFile>

#include <algorithm>

namespace vo::data {

namespace {

/// Decides how each attachment travels.
class AttachmentPacker
{
public:
    /// The entry of the attachment in the document.
    QJsonObject pack(const AttachmentInfo &info)
    {
        const qint64 textSize = estimatedTextSize(info.size);
        if (info.present) {
            log(info, "no transfer, already present");
            return stub();
        }
        if (m_inlineBytes + textSize <= tuning::inlineAttachmentLimit) {
            log(info, "inline transfer");
            return inlineEntry(info, textSize);
        }
        log(info, "separate transfer");
        m_separate.append({ info.size, info.contentType, info.localFile, info.url });
        return stub();
    }

    /// What goes by itself.
    [[nodiscard]] const QList<TransferItem> &separate() const { return m_separate; }

private:
    static void log(const AttachmentInfo &info, const char *way)
    {
        qCDebug(lcSaveQueue) << info.hash << info.contentType << way;
    }

    static QJsonObject stub() { return { { jsonkeys::stub, true } }; }

    /// As base64.
    static qint64 estimatedTextSize(qint64 size)
    {
        constexpr double growth = 1.3333;
        return qint64(double(size) * growth);
    }

    QJsonObject inlineEntry(const AttachmentInfo &info, qint64 textSize)
    {
        QFile file(info.localFile);
        if (!file.open(QIODevice::ReadOnly)) {
            qCCritical(lcSaveQueue) << "Failed to open input file" << info.localFile << file.error()
                                    << file.errorString();
            return {};
        }
        m_inlineBytes += textSize;
        return { { jsonkeys::contentType, QString::fromLatin1(info.contentType) },
                 { jsonkeys::attachmentData, QString::fromLatin1(file.readAll().toBase64()) } };
    }

    qint64 m_inlineBytes = 0;
    QList<TransferItem> m_separate;
};

} // namespace

UploadBody::~UploadBody()
{
    if (!m_fileName.isEmpty()) {
        QFile::remove(m_fileName);
    }
}

bool UploadBody::write(const QByteArray &text)
{
    // A QTemporaryFile that is closed keeps its descriptor until it is destroyed.
    QTemporaryFile file;
    file.setAutoRemove(false);
    if (!file.open()) {
        qCCritical(lcSaveQueue) << "Failed to open output file" << file.fileTemplate()
                                << file.error() << file.errorString();
        return false;
    }
    m_fileName = file.fileName();
    if (file.write(text) != text.size() || !file.flush()) {
        qCCritical(lcSaveQueue) << "Document data write error" << file.error()
                                << file.errorString();
        return false;
    }
    return true;
}

QList<TransferItem> buildTransferItems(const QUrl &documentUrl, QJsonObject document,
                                       QList<AttachmentInfo> attachments, UploadBody &body)
{
    // The small ones first, so that as many as possible go with the document.
    std::stable_sort(
        attachments.begin(), attachments.end(),
        [](const AttachmentInfo &a, const AttachmentInfo &b) { return a.size < b.size; });
    AttachmentPacker packer;
    QJsonObject entries;
    for (const AttachmentInfo &info : std::as_const(attachments)) {
        entries.insert(QLatin1String(info.hash), packer.pack(info));
    }
    document.insert(jsonkeys::attachments, entries);
    entries = {};
    const QByteArray text = QJsonDocument(document).toJson(QJsonDocument::Compact);
    if (text.size() > tuning::largeDocument) {
        qCWarning(lcSaveQueue, "Document %s is %lld bytes long: the database may refuse it",
                  qPrintable(document.value(jsonkeys::id).toString()), qlonglong(text.size()));
    }
    document = {};
    if (!body.write(text)) {
        return {};
    }
    QList<TransferItem> items = packer.separate();
    items.append(
        { text.size(), QByteArrayLiteral("application/json"), body.fileName(), documentUrl });
    return items;
}

} // namespace vo::data
