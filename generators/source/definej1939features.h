#pragma once

#include <QString>

struct DefineContext;

// The features of the J1939 stack: CAN FD buffers, indications, transport protocols, diagnostic
// messages and the services that J1939 lines may carry beside the parameter groups.
class DefineJ1939Features
{
public:
    explicit DefineJ1939Features(DefineContext &context);
    void write();

private:
    void writeFdBuffers();
    void writeIndications();
    void writeTransport();
    void writeDiagnostics();
    void writeServices();
    // A buffer size that may name a macro: a number gets the suffix "u", a name stays bare.
    void writeBufferSize(const QString &macro, const QString &key);

    DefineContext &context;
};
