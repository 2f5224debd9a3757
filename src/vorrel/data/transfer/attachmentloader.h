// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqml.h>

#include <vector>

namespace vo::data {

class Attachment;
class Document;

/// Gets the file of a document here, so that something can be bound to it:
///
///     AttachmentLoader { id: picture; document: product.primaryImage }
///     Image { source: picture.url }
///     BusyIndicator { running: picture.status === AttachmentLoader.Loading }
///
/// It loads by itself as soon as it is told what, and again when the document gets another file. In
/// QML that begins when all properties of the loader are set. What it loads may be destroyed at any
/// time. It never makes the Context busy and adds no error to it; a download that has failed is
/// tried again by reload(), and whenever the Context tries to fix its errors.
class VORREL_DATACORE_EXPORT AttachmentLoader : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_NAMED_ELEMENT(AttachmentLoader)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_MOC_INCLUDE("vorrel/data/properties/attachment.h")
    Q_PROPERTY(vo::data::Document *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QString property READ property WRITE setProperty NOTIFY propertyChanged)
    Q_PROPERTY(vo::data::Attachment *attachment READ attachment WRITE setAttachment NOTIFY
                   attachmentChanged)
    Q_PROPERTY(QUrl url READ url NOTIFY urlChanged)
    Q_PROPERTY(vo::data::AttachmentLoader::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)

public:
    /// As those of Image.
    enum Status {
        Null = 0, ///< there is no file to load, or no ReadAccess to it
        Ready = 1,
        Loading = 2,
        Error = 3,
    };
    Q_ENUM(Status)

    explicit AttachmentLoader(QObject *parent = nullptr);
    ~AttachmentLoader() override;

    /// The document whose file is loaded.
    [[nodiscard]] Document *document() const;
    void setDocument(Document *document);

    /// The name of its property; "file" at first.
    [[nodiscard]] QString property() const;
    void setProperty(const QString &property);

    /// What is loaded. To set it is the other way to say so: it goes before document() and
    /// property() until it is set to null.
    [[nodiscard]] Attachment *attachment() const;
    void setAttachment(Attachment *attachment);

    /// The local file; empty unless the status is Ready.
    [[nodiscard]] QUrl url() const;
    [[nodiscard]] Status status() const;

    /// The part that is here, from 0 to 1. It is 0 as long as the size is not known.
    [[nodiscard]] double progress() const;

    /// The message for the user, empty unless the status is Error.
    [[nodiscard]] QString error() const;

    /// Tries again what has failed.
    Q_INVOKABLE void reload();

    void classBegin() override;
    void componentComplete() override;

Q_SIGNALS:
    void documentChanged();
    void propertyChanged();
    void attachmentChanged();
    void urlChanged();
    void statusChanged();
    void progressChanged();
    void errorChanged();

private:
    struct State
    {
        Status status = Null;
        QUrl url;
        double progress = 0;
    };

    void choose();
    [[nodiscard]] Attachment *target() const;
    void follow(Attachment *attachment);
    void update();
    void downloadFinished(bool success);
    void setState(const State &state);

    QPointer<Document> m_document;
    QString m_property;
    QPointer<Attachment> m_given;      // by setAttachment()
    QPointer<Attachment> m_attachment; // that is loaded
    QMetaObject::Connection m_documentEnd;
    std::vector<QMetaObject::Connection> m_connections; // to what is loaded
    State m_state;
    bool m_building = false; // QML sets properties just now
    bool m_failed = false;
};

} // namespace vo::data
