// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/contexterror.h>

#include <QtNetwork/QNetworkReply>

namespace vo::data {

/// The failure of a request to the database. Its code is, in this order,
///
/// - the HTTP status, if that is 400 or above;
/// - the number of the network error, if it is one of 1 (connection refused), 2 (remote host
///   closed), 3 (host not found), 4 (timeout), 6 (SSL handshake failed), 7 (temporary network
///   failure), 8 (network session failed), 9 (background request not allowed) or 99 (unknown);
/// - 999 for everything else.
///
/// Its text is that of the id "error.network." and the code. The library has texts for the codes
/// below 400, for 999 and for the common statuses; a status without one takes that of 400, or from
/// 500 on that of 500.
class VORREL_DATACORE_EXPORT NetworkError : public vo::data::ContextError
{
    Q_OBJECT
    QML_NAMED_ELEMENT(NetworkError)
    QML_UNCREATABLE("Errors are made by what has failed")

public:
    /// \p statusCode is the HTTP status; 0 when no HTTP answer came.
    NetworkError(Severity severity, int statusCode, QNetworkReply::NetworkError error,
                 QObject *parent = nullptr);
    ~NetworkError() override;

    [[nodiscard]] int errorCode() const override;
    [[nodiscard]] QString errorString() const override;

private:
    const int m_code;
};

} // namespace vo::data
