// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "ingredient.h"

using vo::data::Property;

struct Ingredient::Private
{
    Ingredient *const q;
    Property<QString> name { "name", q };
    Property<double> grams { "grams", q };
};

Ingredient::Ingredient(vo::data::Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

Ingredient::~Ingredient() = default;

VO_DEFINE_PROPERTY(Ingredient, QString, name, setName)
VO_DEFINE_PROPERTY(Ingredient, double, grams, setGrams)
