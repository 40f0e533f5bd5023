#pragma once

#include <QtGlobal>

struct DefineContext;

// The number of CAN message objects that the stack allocates for a line. The stack takes exactly
// that many, so each service that sends or receives has its term here.
class DefineCobCounter
{
public:
    // Stands for all lines in `canopenCount`.
    static constexpr quint8 AllLines = 255;

    explicit DefineCobCounter(const DefineContext &context);

    // The CANopen part of a line; with AllLines the sum over the lines that have object 0x1000.
    int canopenCount(quint8 line) const;
    // The J1939 part of a line.
    int j1939Count(quint8 line) const;
    // ISO-TP connections of a line in the J1939 and multi-protocol counts.
    int isoTpTerm(quint8 line) const;
    // The UDS server and clients of a line in those counts; the server counts only with
    // `udsserver_supported` when serverNeedsSupport is set.
    int udsTerm(quint8 line, bool serverNeedsSupport) const;

private:
    int canopenLineCount(quint8 line, int position) const;
    int additionalCount(int position) const;

    const DefineContext &context;
};
