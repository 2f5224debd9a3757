// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/models/filters/filtercriterion.h>

#include <QtQml/QQmlListProperty>

#include <memory>

namespace vo::data {

/// Passes documents that are not in a list, for instance what is chosen already:
///
///     BlacklistFilterCriterion { blacklist: cart.documents }
///
/// With an empty list it is left out. A document that is destroyed leaves the list at once;
/// blacklistChanged() follows.
class VORREL_DATACORE_EXPORT BlacklistFilterCriterion : public vo::data::FilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BlacklistFilterCriterion)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> blacklist READ blacklist NOTIFY blacklistChanged)

public:
    explicit BlacklistFilterCriterion(QObject *parent = nullptr);
    ~BlacklistFilterCriterion() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// Not owned. Each document stands in it once.
    [[nodiscard]] QQmlListProperty<Document> blacklist();

Q_SIGNALS:
    void blacklistChanged();

private:
    const std::unique_ptr<class DocumentList> m_blacklist;
};

} // namespace vo::data
