// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "recipe.h"

using vo::data::InlineDocumentListProperty;
using vo::data::LinkedDocumentProperty;
using vo::data::Property;

struct Recipe::Private
{
    Recipe *const q;
    Property<QString> title { "title", q };
    Property<int> servings { "servings", 4, q };
    LinkedDocumentProperty<Recipe> basedOn { "basedOn", q };
    LinkedDocumentProperty<vo::data::Tag> season { "season", q };
    Property<int> timesCooked { "timesCooked", q };
    InlineDocumentListProperty<Ingredient> ingredients { "ingredients", q };
};

Recipe::Recipe(vo::data::Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Recipe::~Recipe() = default;

VO_DEFINE_PROPERTY(Recipe, QString, title, setTitle)
VO_DEFINE_PROPERTY(Recipe, int, servings, setServings)
VO_DEFINE_PROPERTY(Recipe, Recipe *, basedOn, setBasedOn)
VO_DEFINE_PROPERTY(Recipe, vo::data::Tag *, season, setSeason)
VO_DEFINE_READONLY_PROPERTY(Recipe, int, timesCooked)

QList<Ingredient *> Recipe::ingredients() const
{
    return d->ingredients.get();
}

QQmlListProperty<Ingredient> Recipe::ingredientList()
{
    return { this, nullptr,
             [](QQmlListProperty<Ingredient> *list) {
                 return static_cast<Recipe *>(list->object)->ingredients().size();
             },
             [](QQmlListProperty<Ingredient> *list, auto index) {
                 return static_cast<Recipe *>(list->object)->ingredients().value(index);
             } };
}

Ingredient *Recipe::addIngredient(const QString &name, double grams)
{
    auto *ingredient = static_cast<Ingredient *>(
        vo::data::InlineDocument::create(QStringLiteral("ingredient"), this));
    ingredient->setName(name);
    ingredient->setGrams(grams);
    return d->ingredients.insert(ingredient, -1) ? ingredient : nullptr;
}

void Recipe::cook()
{
    d->timesCooked.set(d->timesCooked.get() + 1);
}

void registerCookbook()
{
    vo::data::registerDocument<Ingredient>();
    vo::data::registerDocument<Recipe>();
    const QString reason = QStringLiteral("Documents are made by a Context");
    qmlRegisterUncreatableType<Ingredient>("Cookbook", 1, 0, "Ingredient", reason);
    qmlRegisterUncreatableType<Recipe>("Cookbook", 1, 0, "Recipe", reason);
}
