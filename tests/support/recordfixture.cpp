// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/recordfixture.h"

#include "support/literals.h"

namespace vo::test {

using data::ChangeFeedMonitor;
using data::Context;

TestMonitor::TestMonitor(const QString &database, Context *context)
    : BaseChangeFeedMonitor(database, context)
{
    connect(this, &ChangeFeedMonitor::newRevision, this,
            [this](const QString &id, const QString &revision) { log << id + ":"_s + revision; });
    connect(this, &ChangeFeedMonitor::newDocument, this,
            [this](const QString &id) { log << "new "_s + id; });
}

void TestMonitor::handle(const QString &record)
{
    handleRecord(QJsonDocument::fromJson(record.toUtf8()).object());
}

void TestMonitor::handle(const QString &id, const QString &revision)
{
    handle(R"({"seq":"%2","id":"%1","changes":[{"rev":"%2"}]})"_s.arg(id, revision));
}

RecordFixture::RecordFixture()
{
    const auto make = [](const QString &database, Context *context) -> ChangeFeedMonitor * {
        return new TestMonitor(database, context);
    };
    ChangeFeedMonitor::registerType(Context::PollingMonitor, make);
    context()->setChangeFeedMonitorType(Context::PollingMonitor);
    context()->setDatabase("followed"_s);
    monitor = context()->findChild<TestMonitor *>();
}

void RecordFixture::call(const char *slot) const
{
    QMetaObject::invokeMethod(context(), slot);
    processEvents();
}

} // namespace vo::test

#include "moc_recordfixture.cpp"
