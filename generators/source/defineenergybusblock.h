#pragma once

#include <QHash>
#include <QString>

struct DefineContext;

// The EnergyBus devices that the project holds, and those of the network around it.
class DefineEnergyBusBlock
{
public:
    explicit DefineEnergyBusBlock(DefineContext &context);
    void write();

private:
    // A security device of kind 0 is an extension of the controller, not a device of its own.
    bool hasPlainSecurity() const;
    QHash<QString, qint64> countKinds(bool plainSecurity) const;
    void writeDeviceCounts(const QHash<QString, qint64> &kinds);
    void writeNetworkCounts(const QHash<QString, qint64> &kinds, bool plainSecurity);

    DefineContext &context;
};
