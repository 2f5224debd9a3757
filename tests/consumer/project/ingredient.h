// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "cookbook_export.h"

#include <VorrelDataCore>

/// So much of something, inside a Recipe.
class COOKBOOK_EXPORT Ingredient : public vo::data::InlineDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "ingredient")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(double, grams, setGrams)

public:
    explicit Ingredient(vo::data::Document *parent);
    ~Ingredient() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
