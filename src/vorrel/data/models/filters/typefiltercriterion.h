// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/filtercriterion.h>

#include <QtCore/QStringList>

namespace vo::data {

/// Passes documents of some types:
///
///     TypeFilterCriterion { types: ["asset", "tag"]; matchSubtypes: true }
///
/// Without types it passes nothing.
class VORREL_DATACORE_EXPORT TypeFilterCriterion : public vo::data::FilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TypeFilterCriterion)
    Q_PROPERTY(QStringList types READ types WRITE setTypes NOTIFY typesChanged)
    Q_PROPERTY(
        bool matchSubtypes READ matchSubtypes WRITE setMatchSubtypes NOTIFY matchSubtypesChanged)

public:
    using FilterCriterion::FilterCriterion;
    ~TypeFilterCriterion() override;

    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// Whole types, as in "asset:image".
    [[nodiscard]] QStringList types() const;
    void setTypes(const QStringList &types);

    /// Whether documents of the types below these pass, too. False at first.
    [[nodiscard]] bool matchSubtypes() const;
    void setMatchSubtypes(bool matchSubtypes);

Q_SIGNALS:
    void typesChanged();
    void matchSubtypesChanged();

private:
    QStringList m_types;
    bool m_matchSubtypes = false;
};

} // namespace vo::data
