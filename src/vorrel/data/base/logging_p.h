// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLoggingCategory>

namespace vo::data {

// The log categories of the library. Names and default levels stand in logging.cpp.
Q_DECLARE_LOGGING_CATEGORY(lcData)
Q_DECLARE_LOGGING_CATEGORY(lcTrace)
Q_DECLARE_LOGGING_CATEGORY(lcContext)
Q_DECLARE_LOGGING_CATEGORY(lcLoadQueue)
Q_DECLARE_LOGGING_CATEGORY(lcDocCache)
Q_DECLARE_LOGGING_CATEGORY(lcIncubator)
Q_DECLARE_LOGGING_CATEGORY(lcChangeFeed)
Q_DECLARE_LOGGING_CATEGORY(lcSaveQueue)
Q_DECLARE_LOGGING_CATEGORY(lcAttachmentStore)
Q_DECLARE_LOGGING_CATEGORY(lcListing)
Q_DECLARE_LOGGING_CATEGORY(lcJob)
Q_DECLARE_LOGGING_CATEGORY(lcCustom)
Q_DECLARE_LOGGING_CATEGORY(lcSchema)

} // namespace vo::data
