// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"
#include "support/literals.h"
#include "support/manualclock.h"

#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <random>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

/// Edits of another client arrive though the server restarts.
class tst_Following : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void continuously() { follow(Context::ContinuousMonitor); }
    void byLongPolls() { follow(Context::LongPollingMonitor); }
    void byPolls() { follow(Context::PollingMonitor); }

private:
    static void follow(Context::ChangeFeedMonitorType type)
    {
        ManualClock clock;
        DevSite site;
        site.monitorType = type;
        Graph graph;
        for (int i = 0; i < 500; ++i) {
            graph.insert(QString::number(i), {});
        }
        QVERIFY2(site.open(graph), qPrintable(site.server.errorString()));
        site.context.setFollowsRemoteEdits(true);
        QStringList ids = graph.keys();
        QSignalSpy loaded(site.context.loadDocuments(ids), &LoadRequest::finished);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 60000);
        QHash<QString, QString> revisions;
        for (const QString &id : ids) {
            revisions.insert(id, site.context.loadedDocument(id)->revision());
        }
        std::shuffle(ids.begin(), ids.end(), std::mt19937(std::random_device()()));
        for (int i = 0; i < ids.size(); ++i) {
            if (i % 125 == 100 && i < 400 && site.server.isOwnProcess()) {
                site.server.kill();
                QTest::qWait(20);
                QVERIFY2(site.server.start(), qPrintable(site.server.errorString()));
            }
            QString &revision = revisions[ids.at(i)];
            QJsonObject edit = R"({"type":"tag","label":"edited"})"_json;
            edit.insert("_id"_s, ids.at(i));
            edit.insert("_rev"_s, revision);
            revision = site.server.put(edit);
            clock.advance(100ms);
        }
        const auto isLevel = [&] {
            clock.advance(500ms);
            return std::all_of(ids.begin(), ids.end(), [&](const QString &id) {
                const Document *document = site.context.loadedDocument(id);
                return document->revision() == revisions.value(id)
                    && document->label() == "edited"_s;
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(isLevel(), 90000); // more than the time limit of a request
    }
};

QTEST_GUILESS_MAIN(tst_Following)
#include "tst_following.moc"
