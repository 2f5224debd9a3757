// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/context/job.h>

#include <QtCore/QJsonValue>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

namespace vo {
class Request;
}

namespace vo::data {

/// Asks a view of the database. It has finished when there is an answer; until then its error shows
/// on the Context. A view that the database does not have is told of in "vorrel.listing", at
/// critical: "database has no view by_type: install the design document".
class VORREL_DATACORE_EXPORT ViewJob : public Job
{
    Q_OBJECT

public:
    ~ViewJob() override;

    /// The answer of the database. Undefined before the job has finished.
    [[nodiscard]] QJsonValue result() const;

protected:
    /// \p url is that of the view, with the query.
    ViewJob(const QUrl &url, ContextError::Severity severity, Context *context);

    [[nodiscard]] const QUrl &url() const { return m_url; }

    /// What is sent, with this job as the parent. A GET here.
    [[nodiscard]] virtual Request *createRequest(const QNetworkRequest &request);

    /// The request has ended with this HTTP status; result() is undefined if that was no success.
    /// Comes before the status of the job changes, and may destroy it. Does nothing here.
    virtual void answered(int statusCode);

    void run() override;

    /// Null if nothing was asked.
    [[nodiscard]] ContextError *createJobError() override;

private:
    void requestFinished();

    const QUrl m_url;
    const ContextError::Severity m_severity;
    QPointer<Request> m_request; // child
    QJsonValue m_result { QJsonValue::Undefined };
    int m_statusCode = 0;
    QNetworkReply::NetworkError m_error = QNetworkReply::NoError;
};

} // namespace vo::data
