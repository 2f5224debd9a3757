// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/viewjob.h>

#include <vorrel/data/context/context.h>
#include <vorrel/data/context/joberror.h>
#include <vorrel/data/jobs/databaseview_p.h>

#include <vorrel/core/getrequest.h>

namespace vo::data {

namespace {

constexpr int httpOk = 200;

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

Request *ViewJob::createRequest(const QNetworkRequest &request)
{
    return new GetRequest(request, context()->networkAccessManager(), this);
}

void ViewJob::answered(int /*statusCode*/) { }

void ViewJob::run()
{
    m_request = createRequest(QNetworkRequest(m_url));
    m_request->setSuppressErrors(true);
    connect(m_request, &Request::finished, this, &ViewJob::requestFinished);
}

void ViewJob::requestFinished()
{
    m_statusCode = m_request->responseCode();
    m_error = m_request->error();
    m_result =
        m_request->isOk(httpOk) ? m_request->response(nullptr) : QJsonValue(QJsonValue::Undefined);
    DatabaseView::reportIfMissing(*m_request);
    const QPointer<ViewJob> self(this);
    answered(m_statusCode);
    if (self) {
        setStatus(m_result.isObject() ? Finished : Error);
    }
}

ContextError *ViewJob::createJobError()
{
    return m_request ? new JobError(m_severity, m_statusCode, m_error, this) : nullptr;
}

} // namespace vo::data

#include "moc_viewjob.cpp"
