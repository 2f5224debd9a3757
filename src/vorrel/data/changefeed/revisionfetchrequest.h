// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <vorrel/core/postrequest.h>

#include <QtCore/QStringList>

namespace vo::data {

/// Asks the database for the present revisions of documents.
class VORREL_DATACORE_EXPORT RevisionFetchRequest : public vo::PostRequest
{
    Q_OBJECT
public:
    RevisionFetchRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                         const QJsonObject &body, const QStringList &ids, QObject *parent);

    /// The documents that it asks for.
    [[nodiscard]] QStringList ids() const { return m_ids; }

private:
    const QStringList m_ids;
};

} // namespace vo::data
