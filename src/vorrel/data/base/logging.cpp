// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/logging_p.h>

namespace vo::data {

// The level is the lowest that is on by default.
Q_LOGGING_CATEGORY(lcData, "vorrel.data", QtDebugMsg)
Q_LOGGING_CATEGORY(lcTrace, "vorrel.data.trace", QtCriticalMsg)
Q_LOGGING_CATEGORY(lcContext, "vorrel.data.context", QtInfoMsg)
Q_LOGGING_CATEGORY(lcLoadQueue, "vorrel.data.loadqueue", QtInfoMsg)
Q_LOGGING_CATEGORY(lcDocCache, "vorrel.doccache", QtInfoMsg)
Q_LOGGING_CATEGORY(lcIncubator, "vorrel.data.incubator", QtInfoMsg)
Q_LOGGING_CATEGORY(lcChangeFeed, "vorrel.changefeed", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSaveQueue, "vorrel.data.savequeue", QtInfoMsg)
Q_LOGGING_CATEGORY(lcAttachmentStore, "vorrel.attachmentstore", QtInfoMsg)
Q_LOGGING_CATEGORY(lcListing, "vorrel.listing", QtInfoMsg)
Q_LOGGING_CATEGORY(lcJob, "vorrel.job", QtInfoMsg)
Q_LOGGING_CATEGORY(lcCustom, "vorrel.data.custom", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSchema, "vorrel.schema", QtWarningMsg)

} // namespace vo::data
