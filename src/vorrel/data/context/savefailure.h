// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

namespace vo::data {

class Document;

/// A document that could not be saved, and why. A value; see Context::saveFailures().
class VORREL_DATACORE_EXPORT SaveFailure
{
    Q_GADGET
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(QString documentId READ documentId CONSTANT)
    Q_PROPERTY(vo::data::Document *document READ document CONSTANT)
    Q_PROPERTY(int status READ status CONSTANT)
    Q_PROPERTY(QString reason READ reason CONSTANT)

public:
    SaveFailure();
    SaveFailure(const QString &documentId, Document *document, int status, const QString &reason);

    [[nodiscard]] QString documentId() const;

    /// Null when the document has gone.
    [[nodiscard]] Document *document() const;

    /// The HTTP status of the answer, 0 when there was none.
    [[nodiscard]] int status() const;

    /// In the words of the server, or, without any, what happened here, in English.
    [[nodiscard]] QString reason() const;

private:
    QString m_documentId;
    QPointer<Document> m_document;
    int m_status = 0;
    QString m_reason;
};

} // namespace vo::data

Q_DECLARE_METATYPE(vo::data::SaveFailure)
