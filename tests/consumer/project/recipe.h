// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "cookbook_export.h"
#include "ingredient.h"

#include <VorrelDataCore>

/// A document with a property of each kind that the macros are for.
class COOKBOOK_EXPORT Recipe : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "recipe")
    VO_PROPERTY(QString, title, setTitle)
    VO_PROPERTY(int, servings, setServings)
    VO_PROPERTY(Recipe *, basedOn, setBasedOn)
    VO_PROPERTY(vo::data::Tag *, season, setSeason)
    VO_READONLY_PROPERTY(int, timesCooked)
    Q_PROPERTY(
        QQmlListProperty<Ingredient> ingredients READ ingredientList NOTIFY ingredientsChanged)

public:
    explicit Recipe(vo::data::Context *context);
    ~Recipe() override;

    [[nodiscard]] QList<Ingredient *> ingredients() const;
    [[nodiscard]] QQmlListProperty<Ingredient> ingredientList();
    Q_INVOKABLE Ingredient *addIngredient(const QString &name, double grams);
    Q_INVOKABLE void cook();

Q_SIGNALS:
    void ingredientsChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// Makes both classes known to the library and to QML.
COOKBOOK_EXPORT void registerCookbook();
