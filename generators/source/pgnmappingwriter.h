#pragma once

#include <QString>

class PgnContext;
class PgnManagedVariables;
struct PgnSignal;

// The mapping tables: for each PGN or CAN-ID, where each signal lies in the CAN data and where its
// value lies in memory. In the current generation the two answers stand in parallel tables, the
// mapping and the data table; in the older one each mapping row holds the pointer.
class PgnMappingWriter
{
public:
    PgnMappingWriter(const PgnContext &context, const PgnManagedVariables &variables);

    // An empty line, the comment and the tables of every line.
    QString tables() const;
    // The tables of the PGNs of a J1939 line, receive before transmit.
    QString j1939Tables(quint8 line) const;
    // The tables of the CAN-IDs with data elements of a raw CAN line, receive before transmit.
    QString rawCanTables(quint8 line) const;
    // The memory address of a signal as a mapping or data row holds it.
    QString pointer(quint8 line, const PgnSignal &signal, quint32 sourceAddresses, quint8 direction) const;

private:
    QString pgnTables(quint8 line, quint8 direction, quint32 pgn) const;
    QString canIdTable(quint8 line, quint8 direction, quint32 id) const;
    QString mappingRow(quint8 line, const PgnSignal &signal, quint32 sourceAddresses, quint8 direction) const;

    const PgnContext &context;
    const PgnManagedVariables &variables;
};
