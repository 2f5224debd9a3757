// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/networkerror.h>

#include <QtCore/QPointer>

namespace vo::data {

class Job;

/// A job has failed because its request did. To fix it is to execute the job again; it is fixed
/// when that finishes, or when the job is gone.
class VORREL_DATACORE_EXPORT JobError : public vo::data::NetworkError
{
    Q_OBJECT
    QML_NAMED_ELEMENT(JobError)
    QML_UNCREATABLE("Errors are made by what has failed")

public:
    /// \p statusCode and \p error are those of the request. \pre \p job is not null
    JobError(Severity severity, int statusCode, QNetworkReply::NetworkError error, Job *job,
             QObject *parent = nullptr);
    ~JobError() override;

    /// Null when the job is gone.
    [[nodiscard]] Job *job() const;

    void tryFix() override;

private Q_SLOTS:
    void statusChange();

private:
    const QPointer<Job> m_job;
};

} // namespace vo::data
