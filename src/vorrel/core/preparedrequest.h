// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/coreexport.h>

#include <QtCore/QString>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkRequest>

namespace vo {

/// A QNetworkRequest made ready for the database. Everything that the library sends passes
/// through here, whether a Request sends it or the network access manager directly.
///
/// User name and password of the URL become an `Authorization: Basic` header (UTF-8) and leave
/// the URL; a header that the caller set stays. `Accept` is "application/json" unless set.
/// Redirects are followed for GET only, and only on the same origin, so that credentials never
/// reach another server. The protocol is HTTP/1.1; a body is announced by `Expect: 100-continue`.
///
/// Refused are URLs that are not http or https, and control characters in header fields.
class VORREL_CORE_EXPORT PreparedRequest
{
public:
    PreparedRequest(QNetworkAccessManager::Operation operation, const QNetworkRequest &request);

    /// False for a refused request, which must not be sent.
    [[nodiscard]] bool isValid() const { return m_errorString.isEmpty(); }

    /// Why the request was refused, without the offending text; empty when it is valid.
    [[nodiscard]] QString errorString() const { return m_errorString; }

    /// What to hand to the network access manager. Its URL holds no user info in any case.
    [[nodiscard]] const QNetworkRequest &networkRequest() const { return m_request; }

private:
    QNetworkRequest m_request;
    QString m_errorString;
};

} // namespace vo
