// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqml.h>

namespace vo::data {

/// What the criteria of a DataFilterModel and the sorters of a DataSortModel have in common. It
/// holds configuration only, and belongs to whoever makes it.
class VORREL_DATACORE_EXPORT DataCriterion : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(QString role READ role WRITE setRole NOTIFY roleChanged)

public:
    explicit DataCriterion(QObject *parent = nullptr);
    ~DataCriterion() override;

    /// Whether the criterion has nothing to ask as it is configured, and so is left out. Here: if
    /// it has no role.
    [[nodiscard]] virtual bool skip() const;

    /// True at first.
    [[nodiscard]] bool enabled() const;
    void setEnabled(bool enabled);

    /// The name of the role that is looked at. A role that the source has not counts as empty.
    [[nodiscard]] QString role() const;
    void setRole(const QString &name);

Q_SIGNALS:
    void enabledChanged();
    void roleChanged();

    /// The model asks all rows again. A class of an application emits it when it is configured
    /// otherwise.
    void updateRequired();

private:
    bool m_enabled = true;
    QString m_role;
};

} // namespace vo::data
