// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/propertyfiltercriterion.h>

namespace vo::data {

/// Passes documents with a text somewhere in a property:
///
///     StringFilterCriterion { property: "label"; contains: searchField.text }
///
/// Without a text to search for it is left out.
class VORREL_DATACORE_EXPORT StringFilterCriterion : public vo::data::PropertyFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StringFilterCriterion)
    Q_PROPERTY(
        bool caseSensitive READ caseSensitive WRITE setCaseSensitive NOTIFY caseSensitiveChanged)
    Q_PROPERTY(QString contains READ contains WRITE setContains NOTIFY containsChanged)

public:
    using PropertyFilterCriterion::PropertyFilterCriterion;
    ~StringFilterCriterion() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] FilterFunction createFilterFunction() const override;

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
