// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datafiltercriterion.h>
#include <vorrel/data/custom/proxies/dataproxymodel.h>

#include <QtQml/QQmlListProperty>

namespace vo::data {

/// Shows the rows of a model that pass every criterion, and follows both:
///
///     DataFilterModel {
///         id: found
///         sourceModel: products
///         StringDataFilter { role: "title"; contains: searchField.text }
///         DateDataFilter { role: "validFrom"; to: new Date() }
///         ScriptDataFilter { role: "price"; accepts: price => price < slider.value }
///     }
///     ListView { model: found; delegate: Text { text: model.title } }
class VORREL_DATACORE_EXPORT DataFilterModel : public vo::data::DataProxyModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataFilterModel)
    Q_CLASSINFO("DefaultProperty", "criteria")
    Q_PROPERTY(QQmlListProperty<vo::data::DataFilterCriterion> criteria READ criteria NOTIFY
                   criteriaChanged)

public:
    explicit DataFilterModel(QObject *parent = nullptr);
    ~DataFilterModel() override;

    /// Each criterion stands in it once. They are asked in order, so the cheap and strict ones
    /// belong to the front.
    [[nodiscard]] QQmlListProperty<DataFilterCriterion> criteria();

Q_SIGNALS:
    void criteriaChanged();

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex &parent) const override;
    void forgetFunctions() override;
    void update() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
