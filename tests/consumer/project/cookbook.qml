// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQml 2.15
import vorrel.data.Core 1.0

QtObject {
    property Context context: Context {}
    property var soup: context.createDocumentWithId("recipe", "soup")
    // Follows the edits below, so their signals arrive.
    readonly property string shown: soup.title + " for " + soup.servings + ": "
        + Array.from(soup.ingredients, item => item.grams + " g " + item.name).join(", ")

    Component.onCompleted: {
        soup.title = "Leek soup";
        soup.addIngredient("leek", 500);
        soup.addIngredient("potato", 200);
        soup.ingredients[1].grams = 250.5;
        soup.servings = 6;
        soup.ingredientsChanged();
    }
}
