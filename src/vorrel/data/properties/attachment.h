// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/qqml.h>

namespace vo::data {

/// The file of one attachment property, as QML sees it.
class VORREL_DATACORE_EXPORT Attachment : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Attachment)
    QML_UNCREATABLE("Attachments belong to documents")

public:
    /// What a file is good for.
    enum UsageFlag {
        NoUse = 0,
        StaticRenderUse = 1,
        DynamicRenderUse = 2,
        PreviewUse = 4,
    };
    Q_DECLARE_FLAGS(UsageFlags, UsageFlag)
    Q_FLAG(UsageFlags)

    static constexpr UsageFlags defaultUsage { int(StaticRenderUse) | int(DynamicRenderUse) };
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Attachment::UsageFlags)

} // namespace vo::data
