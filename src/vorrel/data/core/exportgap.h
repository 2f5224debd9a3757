// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace vo::data {

/// Something that an archive of a document would lack: a document that another one refers to, or
/// the file of an attachment. A value; see Document::exportGaps().
class VORREL_DATACORE_EXPORT ExportGap
{
    Q_GADGET
    Q_PROPERTY(QString documentId MEMBER documentId CONSTANT)
    Q_PROPERTY(QString missingId MEMBER missingId CONSTANT)
    Q_PROPERTY(QString attachment MEMBER attachment CONSTANT)

public:
    /// The document that needs it.
    QString documentId;

    /// The id of the document that is not loaded. Empty if it is a file that is missing.
    QString missingId;

    /// The name of the attachment whose file is not on this machine. Empty if it is a document that
    /// is missing.
    QString attachment;
};

} // namespace vo::data

Q_DECLARE_METATYPE(vo::data::ExportGap)
