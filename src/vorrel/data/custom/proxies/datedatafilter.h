// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datafiltercriterion.h>

#include <QtCore/QDate>

namespace vo::data {

/// Passes rows whose role is a day in a range, both ends included:
///
///     DateDataFilter { role: "validFrom"; to: new Date() }
///
/// A role that holds no day is in no range. Without a range the filter is left out.
class VORREL_DATACORE_EXPORT DateDataFilter : public vo::data::DataFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DateDataFilter)
    Q_PROPERTY(QDate from READ from WRITE setFrom RESET resetFrom NOTIFY fromChanged)
    Q_PROPERTY(QDate to READ to WRITE setTo RESET resetTo NOTIFY toChanged)

public:
    using DataFilterCriterion::DataFilterCriterion;
    ~DateDataFilter() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] RowFilter createFilterFunction(const DataRows &rows) const override;

    /// An invalid date, as at first, is no bound; in QML, undefined makes it one.
    [[nodiscard]] QDate from() const;
    void setFrom(QDate date);
    void resetFrom();
    [[nodiscard]] QDate to() const;
    void setTo(QDate date);
    void resetTo();

Q_SIGNALS:
    void fromChanged();
    void toChanged();

private:
    QDate m_from;
    QDate m_to;
};

} // namespace vo::data
