// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/qqml.h>

namespace vo::data {

/// What all running downloads of a Context come to, for a progress bar:
///
///     ProgressBar { visible: shop.download; value: shop.download ? shop.download.percent : 0 }
///
/// The Context makes one when the first of them starts, brings it up to date every second, and
/// destroys it a second after the last of them has ended.
class VORREL_DATACORE_EXPORT DownloadStatus : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DownloadStatus)
    QML_UNCREATABLE("The status of downloads comes from a Context")
    Q_PROPERTY(qint64 received READ received NOTIFY changed)
    Q_PROPERTY(qint64 total READ total NOTIFY changed)
    Q_PROPERTY(double percent READ percent NOTIFY changed)

public:
    explicit DownloadStatus(QObject *parent);
    ~DownloadStatus() override;

    /// Bytes that have come, and bytes in all as far as that is known.
    [[nodiscard]] qint64 received() const;
    [[nodiscard]] qint64 total() const;

    /// The part that has come, from 0 to 1. It is 0 as long as no size is known, falls when another
    /// download joins, and ends at 1.
    [[nodiscard]] double percent() const;

    /// The sums over all downloads that run. Sizes that are not known count as 0.
    void report(qint64 received, qint64 total);

    /// All of them have ended.
    void finish();

Q_SIGNALS:
    void changed();

private:
    void set(qint64 received, qint64 total, bool finished);

    qint64 m_received = 0;
    qint64 m_total = 0;
    bool m_finished = false;
};

} // namespace vo::data
