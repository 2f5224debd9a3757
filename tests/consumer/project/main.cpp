// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Uses the installed library with the document classes of the cookbook; ends with the number of
// faults.

#include "recipe.h"

#include <VorrelDataCore>

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

using namespace vo::data;

namespace {

int faults = 0;

template <typename T>
void compare(const char *what, const T &actual, const T &expected)
{
    if (!(actual == expected)) {
        qWarning().noquote() << what << "is" << actual << "instead of" << expected;
        ++faults;
    }
}

QJsonObject stored(const Recipe *recipe)
{
    QJsonObject json = recipe->serialize();
    for (const char *key : { "created", "edited", "creationVersion" }) {
        json.remove(QLatin1String(key));
    }
    return json;
}

const char bread[] = R"({
    "_id": "bread", "type": "recipe", "deleted": false, "title": "Bread", "servings": 2,
    "basedOn": "dough", "season": "winter", "timesCooked": 1,
    "ingredients": [
        { "type": "ingredient", "name": "flour", "grams": 500 },
        { "type": "ingredient", "name": "water", "grams": 312.5 }
    ],
    "references": ["dough", "winter"]
})";

void editsAreStored()
{
    Context context;
    auto *dough = qobject_cast<Recipe *>(
        context.createDocumentWithId(QStringLiteral("recipe"), QStringLiteral("dough")));
    auto *winter = qobject_cast<Tag *>(
        context.createDocumentWithId(QStringLiteral("tag"), QStringLiteral("winter")));
    auto *recipe = qobject_cast<Recipe *>(
        context.createDocumentWithId(QStringLiteral("recipe"), QStringLiteral("bread")));
    if (!dough || !winter || !recipe) {
        qFatal("a registered class is not known");
    }
    int notified = 0;
    QObject::connect(recipe, &Recipe::titleChanged, recipe, [&] { ++notified; });
    compare("the initial value", recipe->servings(), 4);
    compare("the edit", recipe->setTitle(QStringLiteral("Bread")), true);
    compare("the edit of nothing", recipe->setTitle(QStringLiteral("Bread")), false);
    compare("the number of signals", notified, 1);
    recipe->setServings(2);
    recipe->setBasedOn(dough);
    recipe->setSeason(winter);
    recipe->cook();
    recipe->addIngredient(QStringLiteral("flour"), 500);
    recipe->addIngredient(QStringLiteral("water"), 312.5);
    compare("a link in a circle", dough->setBasedOn(recipe), false);
    compare("dirty", recipe->isDirty(), true);
    compare("the stored recipe", stored(recipe), QJsonDocument::fromJson(bread).object());
}

void storedDataIsRead()
{
    Context context;
    const QJsonObject json = QJsonDocument::fromJson(bread).object();
    context.addDocumentNode("winter",
                            { { QStringLiteral("_id"), QStringLiteral("winter") },
                              { QStringLiteral("type"), QStringLiteral("tag") } });
    context.addDocumentNode("dough",
                            { { QStringLiteral("_id"), QStringLiteral("dough") },
                              { QStringLiteral("type"), QStringLiteral("recipe") } });
    context.addDocumentNode("bread", json);
    auto *recipe = qobject_cast<Recipe *>(context.loadedDocument(QStringLiteral("bread")));
    if (!recipe) {
        qFatal("a stored document is not of its class");
    }
    compare("dirty", recipe->isDirty(), false);
    compare("the elements", int(recipe->ingredients().size()), 2);
    compare("an element", recipe->ingredients().value(1)->grams(), 312.5);
    compare("the season", recipe->season()->documentId(), QStringLiteral("winter"));
    compare("the recipe stored again", stored(recipe), json);

    recipe->ingredients().value(0)->setGrams(450);
    compare("dirty by an element", recipe->isDirty(), true);
    recipe->basedOn()->remove();
    compare("the removed target", stored(recipe).value(QLatin1String("references")).toArray(),
            QJsonArray { QStringLiteral("winter") });
}

void qmlUsesIt()
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_PATH));
    QQmlComponent component(&engine, QUrl::fromLocalFile(QStringLiteral(COOKBOOK_QML)));
    const std::unique_ptr<QObject> root(component.create());
    if (!root) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    compare("what QML shows", root->property("shown").toString(),
            QStringLiteral("Leek soup for 6: 500 g leek, 250.5 g potato"));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    registerCookbook();
    editsAreStored();
    storedDataIsRead();
    qmlUsesIt();
    return faults;
}
