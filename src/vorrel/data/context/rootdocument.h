// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQml/qqml.h>

namespace vo::data {

class Context;
class Document;
class LoadRequest;

/// Gives QML one document by its id: loads it, and takes it up when it is created here. The
/// document is null as long as there is none, and while it is deleted.
///
///     RootDocument { context: shop; documentId: "sample.catalogue" }
class VORREL_DATACORE_EXPORT RootDocument : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(RootDocument)
    Q_MOC_INCLUDE("vorrel/data/context/context.h")
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::Document *document READ document NOTIFY documentChanged)
    Q_PROPERTY(vo::data::Context *context READ context WRITE setContext NOTIFY contextChanged)
    Q_PROPERTY(QString documentId READ documentId WRITE setDocumentId NOTIFY documentIdChanged)

public:
    explicit RootDocument(QObject *parent = nullptr);
    ~RootDocument() override;

    [[nodiscard]] Document *document() const;
    [[nodiscard]] Context *context() const;

    /// Not owned.
    void setContext(Context *context);
    [[nodiscard]] QString documentId() const;
    void setDocumentId(const QString &id);

Q_SIGNALS:
    void documentChanged();
    void contextChanged();
    void documentIdChanged();

private Q_SLOTS:
    void loadFinished();
    void handleDocumentAdd(vo::data::Document *document);

private:
    void update();
    void setDocument(Document *document);

    QPointer<Context> m_context;
    QString m_documentId;
    QPointer<Document> m_document;
    QPointer<LoadRequest> m_pendingRequest;
};

} // namespace vo::data
