// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/sortcriterion.h>

#include <QtCore/QString>

namespace vo::data {

/// Sorts by one property of the documents. A document that lacks it counts as one that has nothing
/// there.
class VORREL_DATACORE_EXPORT PropertySortCriterion : public vo::data::SortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PropertySortCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(QString property READ property WRITE setProperty NOTIFY propertyChanged)

public:
    using SortCriterion::SortCriterion;
    ~PropertySortCriterion() override;

    // Those of QObject stay visible.
    using QObject::property;
    using QObject::setProperty;

    [[nodiscard]] QString property() const;
    void setProperty(const QString &name);

Q_SIGNALS:
    void propertyChanged();

private:
    QString m_property;
};

} // namespace vo::data
