// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/module/registration.h>

#include <QtQml/QQmlEngineExtensionPlugin>

/// The QML module "vorrel.data.Core". Its types are in the library: this only brings it in, and
/// the call keeps the linker from leaving it out.
class VorrelDataCorePlugin : public QQmlEngineExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlEngineExtensionInterface_iid)

public:
    explicit VorrelDataCorePlugin(QObject *parent = nullptr)
        : QQmlEngineExtensionPlugin(parent)
    {
        _vo_data_registerTypesdata_core();
    }
};

#include "plugin.moc"
