// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtQml/qqml.h>

namespace vo::data {

class Context;
class ContextError;

/// One piece of background work, which keeps its Context busy as long as it lives there.
///
/// Make one on the heap and connect its signals: it starts by itself in the next turn of the event
/// loop, deletes itself when it has finished, and belongs to the Context. One that fails stays, and
/// so does the busy Context, with an error that tries it again until it succeeds: what is half
/// loaded must not pass for whole. Keep it in guarded pointers only.
///
/// A subclass starts its work in run() and ends it by setStatus(), which may destroy it: nothing of
/// the job may be touched after that. Status changes are logged in "vorrel.job" at debug.
class VORREL_DATACORE_EXPORT Job : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Job)
    QML_UNCREATABLE("Jobs are made by what needs them")
    Q_PROPERTY(vo::data::Job::Status status READ status NOTIFY statusChanged)

public:
    enum Status {
        Ready = 0,
        Running = 1,
        Error = 2,    ///< may be executed again
        Finished = 3, ///< ended well; the job goes
    };
    Q_ENUM(Status)

    ~Job() override;

    /// Null only if the job outlives it for some turns of the event loop.
    [[nodiscard]] Context *context() const;
    [[nodiscard]] Status status() const;

    /// Starts the work, also after it has failed. Does nothing if it runs, has finished or was
    /// aborted.
    Q_INVOKABLE void execute();

protected:
    /// \pre \p context is not null
    explicit Job(Context *context);

    /// Error adds the error of createJobError() to the Context, unless this was a retry, whose
    /// error is there already. Finished lets the job go.
    void setStatus(Status status);

    /// Starts the work. May come several times, so connections to what lives longer than one run
    /// have to be unique.
    virtual void run() = 0;

    /// A new error that describes the failure and tries the job again; the Context takes it over.
    [[nodiscard]] virtual ContextError *createJobError() = 0;

public:
    /// Ends the job without any signal, in a later turn of the event loop.
    virtual void abort();

Q_SIGNALS:
    void finished();
    void statusChanged();

private Q_SLOTS:
    void cleanup();

private:
    void reportError();
    void finish();

    const QPointer<Context> m_context;
    Status m_status = Ready;
    bool m_retrying = false;
    bool m_aborted = false;
};

} // namespace vo::data
