// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/asset.h>

#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QFileInfo>
#include <QtCore/QPointer>

namespace vo::data {

struct Asset::Private
{
    Asset *const q;
    AttachmentProperty file { "file", q };
    Property<QString> fileName { "fileName", q };
    Property<QString> originalHash { "originalHash", q };
    bool fetching = false;
};

Asset::Asset(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
    connect(this, &Asset::fileChanged, this, &Asset::localFileChanged);
    connect(this, &Asset::fileNameChanged, this, &Asset::labelChanged);
}

Asset::~Asset() = default;

VO_DEFINE_READONLY_PROPERTY(Asset, QString, fileName)
VO_DEFINE_READONLY_PROPERTY(Asset, QString, originalHash)

QUrl Asset::file() const
{
    return d->file.get();
}

void Asset::setFile(const QUrl &localFile)
{
    const QByteArray hash = AttachmentProperty::store(localFile);
    if (hash.isEmpty()) {
        return;
    }
    const QString path = localFile.toLocalFile();
    const QPointer<Asset> self(this);
    setFileName(QFileInfo(path).fileName());
    if (self) {
        setFile(hash, MimeMap::mimeTypeForFile(path));
    }
}

void Asset::setFile(const QByteArray &hash, const QByteArray &mimeType)
{
    d->file.set(hash, mimeType);
}

void Asset::setFileName(const QString &name)
{
    d->fileName.set(name);
}

QString Asset::hash() const
{
    return accessLevel() < ReadAccess ? QString() : QString::fromLatin1(d->file.hash());
}

QString Asset::suffix() const
{
    const QString name = fileName();
    return name.contains(QLatin1Char('.')) ? name.section(QLatin1Char('.'), -1) : QString();
}

QUrl Asset::localFile() const
{
    const QUrl url = file();
    if (!url.isEmpty() && !url.isLocalFile() && !d->fetching) {
        d->fetching = true;
        auto *self = const_cast<Asset *>(this);
        documentStore(context()).fetchAttachment(self, QStringLiteral("file"), [self] {
            self->d->fetching = false;
            Q_EMIT self->localFileChanged();
        });
    }
    return url;
}

QString Asset::label() const
{
    const QString label = LinkedDocument::label();
    return label.isEmpty() ? fileName() : label;
}

} // namespace vo::data

#include "moc_asset.cpp"
