// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqml.h>

namespace vo::data {

/// Something outside the program that has failed in a lasting way, such as a connection. Whoever
/// notices makes one and hands it to Context::addError(); the Context owns it from then on, shows
/// it to the user, and asks it from time to time whether its cause is gone. It ends by fixed().
///
/// Errors are messages: none of them keeps the Context from loading or saving.
class VORREL_DATACORE_EXPORT ContextError : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ContextError)
    QML_UNCREATABLE("Errors are made by what has failed")
    Q_PROPERTY(vo::data::ContextError::Severity severity READ severity CONSTANT)
    Q_PROPERTY(int errorCode READ errorCode CONSTANT)
    Q_PROPERTY(QString errorString READ errorString CONSTANT)

public:
    /// From the worst on.
    enum Severity {
        Blocking = 0,
        Major = 1,
        Minor = 2,
    };
    Q_FLAG(Severity)

    explicit ContextError(Severity severity, QObject *parent = nullptr);
    ~ContextError() override;

    [[nodiscard]] Severity severity() const;

    /// The number shown with the message. 0 here.
    [[nodiscard]] virtual int errorCode() const;

    /// The message in the language of the user. It is logged, so it holds no credentials. Empty
    /// here.
    [[nodiscard]] virtual QString errorString() const;

    /// Finds out whether the cause is gone, and emits fixed() if so, at once or later. It only
    /// asks: repair is the work of what has failed.
    virtual void tryFix() = 0;

Q_SIGNALS:
    /// The cause is gone. The Context destroys the error in a later turn of the event loop.
    void fixed();

private:
    const Severity m_severity;
};

} // namespace vo::data
