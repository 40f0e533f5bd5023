#pragma once

#include <QStringList>

struct DefineContext;

// ISO-TP connections and the UDS server and client that run on them.
class DefineIsoTpBlock
{
public:
    explicit DefineIsoTpBlock(DefineContext &context);
    void write();

private:
    void writeConnections();
    void writeEvents();
    void writeUdsServer();
    void writeUdsClient();
    void writeStaticIndications();
    bool authenticationRequired() const;
    // The entries of a connection list setting, without empty ones.
    QStringList connectionEntries(const QString &key) const;

    DefineContext &context;
};
