// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datasortcriterion.h>
#include <vorrel/data/custom/proxies/dataproxymodel.h>

#include <QtQml/QQmlListProperty>

namespace vo::data {

/// Shows the rows of a model in another order, and follows both:
///
///     DataSortModel {
///         id: sorted
///         sourceModel: found
///         DateDataSorter { role: "validFrom"; descending: true }
///         StringDataSorter { role: "title" }
///     }
///     ListView { model: sorted; delegate: Text { text: model.title } }
///
/// The first criterion that tells two rows apart decides, then their places in the source.
class VORREL_DATACORE_EXPORT DataSortModel : public vo::data::DataProxyModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataSortModel)
    Q_CLASSINFO("DefaultProperty", "criteria")
    Q_PROPERTY(
        QQmlListProperty<vo::data::DataSortCriterion> criteria READ criteria NOTIFY criteriaChanged)

public:
    explicit DataSortModel(QObject *parent = nullptr);
    ~DataSortModel() override;

    /// Each criterion stands in it once. They are asked in order.
    [[nodiscard]] QQmlListProperty<DataSortCriterion> criteria();

Q_SIGNALS:
    void criteriaChanged();

protected:
    [[nodiscard]] bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    void forgetFunctions() override;
    void update() override;
    void valuesChanged() override;

private:
    void checkOrder();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
