// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: the listings that it keeps up to date. They stand above it, and so does this aspect.

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/jobs/listing.h>

namespace vo::data {

void Context::addListing(Listing *listing)
{
    const char *const className = listing->metaObject()->className();
    if (d->listings.contains(listing)) {
        qCWarning(lcContext) << "Attempt to add the same listing twice:" << listing << className;
        return;
    }
    qCDebug(lcContext) << "Adding listing" << listing << ", type" << className;
    d->listings.insert(listing);
}

void Context::removeListing(Listing *listing)
{
    qCDebug(lcContext) << "Removing listing" << static_cast<const void *>(listing);
    d->listings.remove(listing);
}

void Context::updateListings()
{
    for (Listing *listing : std::as_const(d->listings)) {
        listing->update(); // later, so that nothing happens in between
    }
}

void Context::handleNewDocument(const QString & /*id*/)
{
    updateListings();
}

} // namespace vo::data
