// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <VorrelDataCore>
#include <QtCore/QCoreApplication>
#include <QtNetwork/QNetworkAccessManager>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QNetworkAccessManager network;
    vo::data::Context shop;
    shop.setNetworkAccessManager(&network);
    shop.setServiceUrl(QUrl(app.arguments().value(1, QStringLiteral("http://127.0.0.1:5984"))));
    shop.setDatabase(QStringLiteral("sample"));
    const auto *request = shop.loadDocument(QStringLiteral("sample.location.utrecht"));
    QObject::connect(request, &vo::data::LoadRequest::finished, &app, [&] {
        if (auto *store = qobject_cast<vo::data::Location *>(request->documents().value(0))) {
            store->setNotes(QStringLiteral("Closed on Mondays"));
            qInfo() << store->label() << store->notes() << shop.hasLocalChanges();
        }
        app.quit();
    });
    return app.exec();
}
