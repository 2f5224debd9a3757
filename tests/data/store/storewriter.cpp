// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Stores an attachment, to be killed at it:
//
//     storewriter DIRECTORY memory|device|download
//     storewriter DIRECTORY
//
// Ends with 1 if that fails once and leaves nothing, with 2 if it fails again. Without a form of
// storing, says whether it is there ("whole" or "nothing") and removes it; fails if it is damaged,
// or if the store cannot take it any more.

#include "support/contextfixture.h"
#include "support/literals.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>

#include <cstdio>

using namespace vo::test;
using vo::data::AttachmentStore;

namespace {

const QByteArray content(2 * 1024 * 1024 + 5, 'x');
const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Md5);

bool isWhole()
{
    QFile file(AttachmentStore::find(hash).toLocalFile());
    return file.open(QIODevice::ReadOnly) && file.readAll() == content;
}

bool storeIsGood()
{
    const bool isThere = AttachmentStore::contains(hash);
    if (isThere && (!isWhole() || !AttachmentStore::removeAttachment(hash))) {
        return false;
    }
    std::puts(isThere ? "whole" : "nothing");
    // Directories may be missing if the making of the store was interrupted.
    return AttachmentStore::storeDir().entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() == 256
        && AttachmentStore::storeAttachment(content, hash).isValid() && isWhole()
        && AttachmentStore::removeAttachment(hash);
}

void download(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    ContextFixture fixture;
    fixture.couch().setResponder([](const FakeCouch::Call & /*call*/) {
        return FakeCouch::Answer { 200, content, {} };
    });
    const auto *document = fixture->createDocument("asset:image"_s);
    document->attachmentProperties().constFirst()->set(hash, "image/png");
    document->attachment("file"_s)->download();
    processEvents();
}

} // namespace

int main(int argc, char *argv[])
{
    vo::Locations::setCacheLocation(QString::fromLocal8Bit(argv[1]));
    AttachmentStore::init();
    if (argc < 3) {
        return storeIsGood() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    QByteArray data = content;
    QBuffer device(&data);
    const QByteArray form = argv[2];
    const auto isStored = [&] {
        if (form == "memory") {
            AttachmentStore::storeAttachment(data, hash);
        } else if (form == "device") {
            AttachmentStore::storeAttachment(&device, hash);
        } else {
            download(argc, argv);
        }
        return AttachmentStore::contains(hash);
    };
    if (isStored()) {
        return EXIT_SUCCESS;
    }
    return isStored() && AttachmentStore::removeAttachment(hash) ? EXIT_FAILURE : 2;
}
