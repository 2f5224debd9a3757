// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace vo::data {

class Context;

/// A source of documents. The load queue offers each wanted id to its loaders, the one of the
/// smallest priority first, until one takes it. The queue that a loader was added to deletes it.
class VORREL_DATACORE_EXPORT Loader : public QObject
{
    Q_OBJECT
public:
    Loader(int priority, Context *context);
    ~Loader() override;

    [[nodiscard]] int priority() const { return m_priority; }
    [[nodiscard]] Context *context() const;

    /// True takes the id on: exactly one of the signals follows for it, in a later turn of the
    /// event loop.
    virtual bool load(const QString &id) = 0;

Q_SIGNALS:
    void loaded(const QString &id, const QJsonObject &data);

    /// The source says that there is no such document.
    void notFound(const QString &id);

    /// The source could not say; the queue will ask again.
    void failed(const QString &id);

private:
    const int m_priority;
};

} // namespace vo::data
