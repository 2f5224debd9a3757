// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/documenttask.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

#include <functional>

namespace vo::data {

/// A task for one document, skipped when the document has gone in the meantime.
class LinkedDocumentTask : public DocumentTask
{
public:
    using Operation = void (LinkedDocument::*)();

    LinkedDocumentTask(LinkedDocument *document, Operation operation)
        : m_document(document)
        , m_operation(operation)
    { }

    void run() override
    {
        if (m_document) {
            (m_document->*m_operation)();
        }
    }

private:
    const QPointer<LinkedDocument> m_document;
    const Operation m_operation;
};

class DocumentAccessLevelUpdateTask : public LinkedDocumentTask
{
public:
    explicit DocumentAccessLevelUpdateTask(LinkedDocument *document)
        : LinkedDocumentTask(document, &LinkedDocument::updateAccessLevel)
    { }
};

class DocumentChangeReportTask : public LinkedDocumentTask
{
public:
    explicit DocumentChangeReportTask(LinkedDocument *document)
        : LinkedDocumentTask(document, &LinkedDocument::deliverDocumentChange)
    { }
};

class DocumentDependencyUpdateTask : public LinkedDocumentTask
{
public:
    explicit DocumentDependencyUpdateTask(LinkedDocument *document)
        : LinkedDocumentTask(document, &LinkedDocument::updateDependencies)
    { }
};

class RunFunctionTask : public DocumentTask
{
public:
    explicit RunFunctionTask(std::function<void()> function)
        : m_function(std::move(function))
    { }

    void run() override { m_function(); }

private:
    const std::function<void()> m_function;
};

} // namespace vo::data
