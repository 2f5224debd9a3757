// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <memory>

namespace vo::data {

/// A component that several variables share; it goes with the last of them. The one that had it
/// made is its parent, and may destroy it.
struct SharedEditor
{
    const QPointer<QQmlComponent> component;
    const QPointer<QQmlEngine> engine;

    ~SharedEditor() { delete component; }
};

using EditorHandle = std::shared_ptr<SharedEditor>;

/// The component that the class information \p kind of \p variable names, for the variables of
/// \p type on \p engine: the one that lives, else a new one. Null if there is no such name, or if
/// the component has errors, which are logged.
[[nodiscard]] EditorHandle sharedEditor(QObject *variable, const QString &type, const char *kind,
                                        QQmlEngine *engine);

} // namespace vo::data
