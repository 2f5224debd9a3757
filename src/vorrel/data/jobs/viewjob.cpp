// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/viewjob.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/joberror.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/core/getrequest.h>

namespace vo::data {

namespace {

constexpr int httpOk = 200;
constexpr int httpNotFound = 404;

} // namespace

ViewJob::ViewJob(const QUrl &url, ContextError::Severity severity, Context *context)
    : Job(context)
    , m_url(url)
    , m_severity(severity)
{ }

ViewJob::~ViewJob() = default;

QJsonValue ViewJob::result() const
{
    return m_result;
}

void ViewJob::run()
{
    qCDebug(lcJob) << "Run listing job" << CouchUrl::displayText(m_url);
    m_request = new GetRequest(QNetworkRequest(m_url), context()->networkAccessManager(), this);
    m_request->setSuppressErrors(true);
    connect(m_request, &Request::finished, this, &ViewJob::requestFinished);
}

void ViewJob::requestFinished()
{
    m_statusCode = m_request->responseCode();
    m_error = m_request->error();
    m_result =
        m_request->isOk(httpOk) ? m_request->response(nullptr) : QJsonValue(QJsonValue::Undefined);
    if (m_statusCode == httpNotFound) {
        qCCritical(lcListing, "database has no view %s: install the design document",
                   qPrintable(m_url.fileName()));
    }
    setStatus(m_result.isObject() ? Finished : Error);
}

ContextError *ViewJob::createJobError()
{
    return new JobError(m_severity, m_statusCode, m_error, this);
}

} // namespace vo::data

#include "moc_viewjob.cpp"
