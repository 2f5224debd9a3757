// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/changerecorder.h"
#include "support/literals.h"
#include "support/testdocuments.h"

#include <memory>

namespace vo::test {

/// The base of tests of documents: a fresh Context for each test function, with the classes of
/// testdocuments.h.
class DocumentTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        registerTestDocuments();
        registerMore();
    }
    void init()
    {
        m_context = std::make_unique<ChangeRecorder>();
        prepare();
    }
    void cleanup() { m_context.reset(); }

protected:
    /// More classes, before the first Context.
    virtual void registerMore() { }

    /// What each test function begins with.
    virtual void prepare() { }

    /// A new document; dirty, since it was never stored.
    template <typename T>
    T *create(const QString &id = {})
    {
        return qobject_cast<T *>(data::LinkedDocument::create(
            data::Document::typeOf(T::staticMetaObject), id, m_context.get()));
    }

    /// A document as the database holds it; clean.
    template <typename T>
    T *load(QJsonObject json)
    {
        json.insert("type"_s, data::Document::typeOf(T::staticMetaObject));
        return qobject_cast<T *>(data::LinkedDocument::create(json, m_context.get()));
    }

    std::unique_ptr<ChangeRecorder> m_context;
};

} // namespace vo::test
