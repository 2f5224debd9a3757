// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/jobs/listing.h>

namespace vo::data {

/// All documents of one type, and of the types below it, the newest first:
///
///     TypeListing { id: products; context: shop; type: "product" }
///     Repeater { model: products.documents; Text { text: modelData.label } }
///
/// The database needs the view "by_type" of the design document "tessaro".
class VORREL_DATACORE_EXPORT TypeListing : public vo::data::Listing
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TypeListing)
    Q_PROPERTY(QString type READ type WRITE setType NOTIFY typeChanged)

public:
    explicit TypeListing(Context *context = nullptr);
    ~TypeListing() override;

    [[nodiscard]] QString type() const;

    /// The list starts anew. While it is empty there is nothing to list.
    void setType(const QString &type);

Q_SIGNALS:
    void typeChanged(const QString &type);

protected:
    [[nodiscard]] QUrl queryUrl() const override;
    [[nodiscard]] bool includeLocalDocument(Document *document) const override;

private:
    QString m_type;
};

} // namespace vo::data
