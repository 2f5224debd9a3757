// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datafiltercriterion.h>

namespace vo::data {

/// Passes rows with a text somewhere in a role:
///
///     StringDataFilter { role: "title"; contains: searchField.text }
///
/// Without a text to search for it is left out.
class VORREL_DATACORE_EXPORT StringDataFilter : public vo::data::DataFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StringDataFilter)
    Q_PROPERTY(
        bool caseSensitive READ caseSensitive WRITE setCaseSensitive NOTIFY caseSensitiveChanged)
    Q_PROPERTY(QString contains READ contains WRITE setContains NOTIFY containsChanged)

public:
    using DataFilterCriterion::DataFilterCriterion;
    ~StringDataFilter() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] RowFilter createFilterFunction(const DataRows &rows) const override;

    /// False at first.
    [[nodiscard]] bool caseSensitive() const;
    void setCaseSensitive(bool caseSensitive);

    [[nodiscard]] QString contains() const;
    void setContains(const QString &text);

Q_SIGNALS:
    void caseSensitiveChanged();
    void containsChanged();

private:
    bool m_caseSensitive = false;
    QString m_contains;
};

} // namespace vo::data
