#pragma once

#include <QGenericPlugin>

/// Brings the random user into the unmodified program, as a plugin of its toolkit: QT_QPA_GENERIC_PLUGINS names it,
/// with the orders behind the colon.
class UserPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "UserPlugin.json")

public:
    QObject* create(const QString& name, const QString& orders) override;
};
