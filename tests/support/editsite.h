// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"
#include "support/devserver.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtTest/QTest>

namespace vo::test {

/// A database on a server of its own, and who works in it.
struct EditSite
{
    EditSite()
    {
        isOpen = server.start();
        reopen();
    }

    /// What is loaded from now on comes from the database.
    void reopen()
    {
        context = std::make_unique<data::EditContext>();
        context->setNetworkAccessManager(&manager);
        context->setContentFetchPolicy(data::Context::BypassDocumentCachePolicy);
        context->setChangeFeedMonitorType(data::Context::NullMonitor);
        context->setServiceUrl(server.serviceUrl());
        context->setDatabase(server.database());
    }
    [[nodiscard]] data::LinkedDocument *load(const QString &id)
    {
        context->loadDocument(id);
        static_cast<void>(QTest::qWaitFor([&] { return context->isLoaded(id); }, patience));
        return qobject_cast<data::LinkedDocument *>(context->loadedDocument(id));
    }
    /// The documents that are not deleted, by their labels.
    [[nodiscard]] QMap<QString, data::Document *> documents() const
    {
        QMap<QString, data::Document *> result;
        for (data::Document *document : ownDocuments(context->documents())) {
            if (!document->deleted() && !document->label().isEmpty()) {
                result.insert(document->label(), document);
            }
        }
        return result;
    }

    DevServer server;
    QNetworkAccessManager manager;
    std::unique_ptr<data::EditContext> context;
    bool isOpen = false;
    static constexpr int patience = 60000; // ms; the machine may be busy
};

} // namespace vo::test
