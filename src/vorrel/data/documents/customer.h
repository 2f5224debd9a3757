// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// A customer of a shop.
class VORREL_DATACORE_EXPORT Customer : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Customer)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "customer")
    VO_PROPERTY(QString, fbtoken, setFbtoken)

public:
    explicit Customer(Context *context);
    ~Customer() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
