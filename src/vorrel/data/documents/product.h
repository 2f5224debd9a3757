// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/catalogitem.h>
#include <vorrel/data/documents/productgroup.h>

namespace vo::data {

/// A product with a price for each country.
class VORREL_DATACORE_EXPORT Product : public vo::data::CatalogItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Product)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "product")
    Q_PROPERTY(QJsonObject prices READ prices NOTIFY pricesChanged)
    Q_PROPERTY(double price READ price WRITE setPrice NOTIFY pricesChanged STORED false)
    VO_PROPERTY(vo::data::ProductGroup *, productGroup, setProductGroup)
    Q_PROPERTY(vo::data::ProductGroup *group READ productGroup WRITE setProductGroup NOTIFY
                   productGroupChanged STORED false)

public:
    explicit Product(Context *context);
    ~Product() override;

    /// By country code.
    [[nodiscard]] QJsonObject prices() const;

    /// The price in the country of the Context.
    [[nodiscard]] double price() const;
    bool setPrice(double price);

    /// 0 for a country without a price.
    Q_INVOKABLE [[nodiscard]] double getPrice(const QString &country) const;
    Q_INVOKABLE bool setPrice(const QString &country, double price);

Q_SIGNALS:
    void pricesChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
