// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "exhibit.h"

using namespace vo::data;

struct Exhibit::Private
{
    Exhibit *const q;
    InlineDocumentProperty<ExhibitValues> values { "values", q };
};

Exhibit::Exhibit(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Exhibit::~Exhibit() = default;

SchemaValueStore *Exhibit::values() const
{
    return d->values.get();
}

void Exhibit::initialize()
{
    // A new document has an empty store from its start: taken as stored data, which is no edit.
    if (d->values.toJson().isNull()) {
        d->values.fromJson(
            QJsonObject { { QStringLiteral("type"), QStringLiteral("exhibitvalues") } });
    }
    LinkedDocument::initialize();
}
