// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iupdatehandler.h>
#include <vorrel/data/core/linkeddocument.h>

#include <functional>

namespace vo::test {

/// Notes the ids that it is called with, the end of each call and its own, and does what the test
/// wants.
class UpdateHandler : public data::IUpdateHandler
{
public:
    using Function = std::function<void(data::LinkedDocument *)>;

    UpdateHandler(QStringList *log, Function function)
        : m_log(log)
        , m_function(std::move(function))
    { }
    ~UpdateHandler() override { m_log->append(QStringLiteral("deleted")); }

    void update(data::LinkedDocument *document) override
    {
        m_log->append(document->documentId());
        m_function(document);
        m_log->append(QStringLiteral("end")); // needs this object
    }

private:
    QStringList *const m_log;
    const Function m_function;
};

} // namespace vo::test
