// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// What a quantity of something costs.
class VORREL_DATACORE_EXPORT Price : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Price)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "price")
    VO_PROPERTY(double, quantity, setQuantity)
    VO_PROPERTY(double, value, setValue)

public:
    explicit Price(Document *parent);
    ~Price() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
