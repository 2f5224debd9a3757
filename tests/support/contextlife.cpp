// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextlife.h"

#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/signalhook.h"
#include "support/testerror.h"

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/iincubatable.h>
#include <vorrel/data/transfer/savequeue.h>

namespace vo::test {

using data::Context;
using data::LinkedDocument;

namespace {

struct Patient : data::IIncubatable
{
    bool incubate(Context *) override { return false; }
};

} // namespace

bool diesInSlot(const QByteArray &senderClass, const QByteArray &signal, int emission)
{
    Patient patient;
    ContextFixture fixture;
    QObject hooks;
    const auto hook = [&](QObject *object) {
        if (object && object->inherits(senderClass)) {
            (new SignalHook(object, signal, [&] {
                if (emission-- == 0) {
                    fixture.destroyContext();
                }
            }))->setParent(&hooks);
        }
    };
    hook(fixture.context());
    hook(fixture->loadQueue());
    hook(fixture->findChild<data::DocumentIncubator *>());
    QObject::connect(fixture.context(), &Context::documentAdded, &hooks, hook);
    fixture.store("a"_s, "b gone"_l);
    fixture.store("b"_s, "a"_l);
    const auto document = [&](const QString &id) {
        return static_cast<LinkedDocument *>(fixture->loadedDocument(id));
    };
    const std::vector<std::function<void()>> steps {
        [&] { fixture->setProperty("serviceUrl", QUrl("http://new.test"_s)); },
        [&] { fixture->setProperty("changeFeedMonitorType", Context::PollingMonitor); },
        [&] { fixture->setAttachmentDownloadEnabled(true); },
        [&] { fixture->setDatabase("second"_s); },
        [&] { fixture->setFollowsRemoteEdits(true); },
        [&] { fixture->incubate(&patient); },
        [&] { hook(fixture->loadDocument("a"_s)); },
        [&] { static_cast<void>(fixture.finishLoading()); },
        [&] { document("a"_s); },
        [&] { document("b"_s); },
        [&] { fixture->linkDocuments(fixture->documentNode("a"), fixture->documentNode("b")); },
        [&] { fixture.create("local"_s); },
        [&] { document("local"_s)->setLabel("x"_s); },
        [&] { hook(fixture.startSaving()); },
        [&] { static_cast<void>(fixture.finishSaving()); },
        [&] { fixture.couch().failNext(1, 500); },
        [&] { fixture.startSaving(); },
        [&] { static_cast<void>(fixture.finishSaving()); },
        [&] { processEvents(); },
        [&] { document("local"_s)->remove(); },
        [&] { fixture.create("local"_s); },
        [&] { processEvents(); },
        [&] { delete document("local"_s); },
        [&] { document("a"_s)->setLabel("edited"_s); },
        [&] { static_cast<void>(fixture->beginDownload()); },
        [&] { tickTimer(fixture.context(), data::tuning::downloadTick); },
        [&] { fixture->addError(new TestError); },
        [&] { tickTimer(fixture.context(), data::tuning::errorRetryTick); },
        [&] { fixture->tryFixErrors(); },
        [&] { delete fixture->primaryError(); },
        [&] { fixture->removeDocument("a"_s); },
        [&] { processEvents(); },
    };
    for (const auto &step : steps) {
        if (fixture.context()) {
            step();
        }
    }
    return !fixture.context();
}

} // namespace vo::test
