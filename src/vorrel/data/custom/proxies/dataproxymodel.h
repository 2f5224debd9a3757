// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QSortFilterProxyModel>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class DataRows;

/// What DataFilterModel and DataSortModel have in common. The source may be a DataListModel or any
/// flat model with named roles; reads and writes of roles go through to it.
///
/// Belongs to whoever makes it, and owns neither source nor criteria. A source that is destroyed
/// counts as none.
class VORREL_DATACORE_EXPORT DataProxyModel : public QSortFilterProxyModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_NAMED_ELEMENT(DataProxyModel)
    QML_UNCREATABLE("Use DataFilterModel or DataSortModel")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    ~DataProxyModel() override;

    void classBegin() override;
    void componentComplete() override;
    void setSourceModel(QAbstractItemModel *model) override;

    /// The number of rows that are shown.
    [[nodiscard]] int count() const;

    /// The row of the source that shows as \p row; -1 if there is no such row.
    Q_INVOKABLE [[nodiscard]] int sourceRow(int row) const;

    /// Where row \p row of the source shows; -1 if it does not.
    Q_INVOKABLE [[nodiscard]] int proxyRow(int row) const;

Q_SIGNALS:
    void countChanged();

protected:
    explicit DataProxyModel(QObject *parent);

    /// The rows of the source, as the functions of criteria read them.
    [[nodiscard]] const DataRows &rows() const;

    /// Whether criteria count yet: while QML makes the model they do not.
    [[nodiscard]] bool isComplete() const;

    /// The functions of the criteria are of no use any more.
    virtual void forgetFunctions() = 0;

    /// Asks the criteria about all rows again, if they count already.
    virtual void update() = 0;

    /// Values of the source are others. Does nothing here.
    virtual void valuesChanged();

private:
    void watch(QAbstractItemModel *model);
    void tellCount();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
