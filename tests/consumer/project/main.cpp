// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Reads a stored playlist with the installed library and its QML module, and stores it again.

#include <playlist.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

using namespace vo::data;

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    registerPlaylists();
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_PATH));
    QQmlComponent component(&engine);
    component.setData("import vorrel.data.Core 1.0\nContext { }", QUrl());
    const std::unique_ptr<QObject> root(component.create());
    auto *context = qobject_cast<Context *>(root.get());
    if (!context) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    const auto json = [](const char *text) { return QJsonDocument::fromJson(text).object(); };
    const QJsonObject stored = json(R"({
        "_id": "evening", "type": "playlist", "deleted": false, "name": "Evening", "loop": true,
        "shop": "utrecht", "references": ["utrecht"],
        "entries": [ { "type": "playlistentry", "title": "A", "seconds": 28, "product": null } ]
    })");
    context->addDocumentNode("utrecht", json(R"({ "_id": "utrecht", "type": "location" })"));
    context->addDocumentNode("evening", stored);
    auto *playlist = qobject_cast<Playlist *>(context->loadedDocument(QStringLiteral("evening")));
    if (!playlist || playlist->isDirty() || playlist->duration() != 28 || !playlist->shop()) {
        qFatal("The playlist is not read");
    }
    QJsonObject again = playlist->serialize();
    for (const QString &key : again.keys()) {
        if (!stored.contains(key)) {
            again.remove(key); // what each save adds
        }
    }
    if (again != stored) {
        qFatal("%s", QJsonDocument(again).toJson().constData());
    }
    return EXIT_SUCCESS;
}
