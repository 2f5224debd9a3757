// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Makes a playlist, lets QML edit it and prints what a database would store. Needs no server.

#include "playlist.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QJsonDocument>
#include <QtQml/QQmlApplicationEngine>

using namespace vo::data;

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    registerPlaylists();

    Context context;
    auto make = [&context](const char *type, const char *id) {
        return context.createDocumentWithId(QLatin1String(type), QLatin1String(id));
    };
    auto *playlist = qobject_cast<Playlist *>(make("playlist", "evening"));
    playlist->setName(QStringLiteral("Evening"));
    playlist->setShop(qobject_cast<Location *>(make("location", "utrecht")));
    PlaylistEntry *entry = playlist->addEntry(QStringLiteral("Paper lamps"));
    entry->setSeconds(28);
    entry->setProduct(qobject_cast<Product *>(make("product", "paper-lamp")));

    QQmlApplicationEngine engine;
    engine.setInitialProperties(
        { { QStringLiteral("playlist"), QVariant::fromValue<QObject *>(playlist) } });
    engine.load(QStringLiteral(EVENING_QML));

    qInfo().noquote() << QJsonDocument(playlist->serialize()).toJson();
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
