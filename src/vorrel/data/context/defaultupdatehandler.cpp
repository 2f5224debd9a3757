// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/defaultupdatehandler.h>

#include <vorrel/data/base/logging_p.h>

namespace vo::data {

void DefaultUpdateHandler::update(LinkedDocument * /*document*/)
{
    qCDebug(lcContext, "Applying update - default to no action");
}

} // namespace vo::data
