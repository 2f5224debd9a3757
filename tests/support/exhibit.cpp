// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/exhibit.h"

#include "support/literals.h"

#include <vorrel/data/core/documentregistration.h>

namespace vo::test {

void Exhibit::initialize()
{
    if (!values()) {
        m_values.fromJson(R"({"type": "exhibitvalues"})"_json);
    }
    LinkedDocument::initialize();
}

void registerExhibits()
{
    data::registerDocument<ExhibitValues>();
    data::registerDocument<Exhibit>();
}

} // namespace vo::test
