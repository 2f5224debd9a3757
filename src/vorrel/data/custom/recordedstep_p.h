// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/ichangerecorder.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

namespace vo::data {

/// Makes the edits of a document in its life one step of undo, which ends also if a slot destroys
/// the document.
class RecordedStep
{
public:
    /// Null for edits that are not to be grouped.
    explicit RecordedStep(LinkedDocument *document)
        : m_context(document ? document->context() : nullptr)
    {
        if (document) {
            document->beginRecordChanges();
        }
    }

    ~RecordedStep()
    {
        if (auto *recorder = qobject_cast<IChangeRecorder *>(m_context.data())) {
            recorder->endRecordChanges();
        }
    }

    Q_DISABLE_COPY_MOVE(RecordedStep)

private:
    const QPointer<Context> m_context;
};

} // namespace vo::data
