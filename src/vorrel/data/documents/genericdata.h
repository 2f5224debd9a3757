// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

/// A document of a type below "data" that has no class of its own. All its content is free-form
/// data.
class VORREL_DATACORE_EXPORT GenericData : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(GenericData)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "data")

public:
    /// \p customType is the rest of the type string: "playlist" makes "data:playlist".
    GenericData(const QString &customType, Context *context);
    ~GenericData() override;

    [[nodiscard]] QString type() const override;

private:
    const QString m_type;
};

} // namespace vo::data
