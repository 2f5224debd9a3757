// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iupdatehandler.h>

namespace vo::data {

/// Leaves an open document as it is when the database holds a newer revision.
class VORREL_DATACORE_EXPORT DefaultUpdateHandler : public IUpdateHandler
{
public:
    void update(LinkedDocument *document) override;
};

} // namespace vo::data
