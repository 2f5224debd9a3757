// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/documentpropertybase.h>

namespace vo::data {

/// A stored field that holds documents by text keys.
class VORREL_DATACORE_EXPORT DocumentMapPropertyBase : public DocumentPropertyBase
{
public:
    using DocumentPropertyBase::DocumentPropertyBase;

    [[nodiscard]] int type() const override { return DocumentMap; }

    virtual bool insert(const QString &key, Document *document) = 0;
    virtual bool remove(const QString &key) = 0;
    virtual bool rename(const QString &from, const QString &to) = 0;
};

} // namespace vo::data
