// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/filtercriterion.h>

#include <QtCore/QString>

namespace vo::data {

/// Asks about one property of a document. A document that lacks it counts as one whose value is
/// false, 0 or empty. Without the name of a property the criterion is left out.
class VORREL_DATACORE_EXPORT PropertyFilterCriterion : public vo::data::FilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PropertyFilterCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(QString property READ property WRITE setProperty NOTIFY propertyChanged)

public:
    using FilterCriterion::FilterCriterion;
    ~PropertyFilterCriterion() override;

    [[nodiscard]] bool skip() const override;

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
