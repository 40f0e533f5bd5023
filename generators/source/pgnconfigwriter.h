#pragma once

#include <QString>

class PgnContext;
struct PGN;

// The configuration tables of the J1939 lines: transmit and receive parameter groups, the address
// claiming group and the J1939_CONFIG_T that hands them to the stack.
class PgnConfigWriter
{
public:
    explicit PgnConfigWriter(const PgnContext &context);

    // Each behind an empty line, one block per line that has something to configure.
    QString transmitTables() const;
    QString receiveTables() const;
    QString addressClaimConfigurations() const;
    // Sets `written` when a line configuration was written.
    QString lineConfigurations(bool *written = nullptr) const;

    // The sizes of the tables of a line, as the multi-line form writes them.
    int transmitCount(quint8 line) const;
    int receiveCount(quint8 line) const;

private:
    // The configuration rows of the line's PGNs of one direction, joined by ",\n".
    QString configRows(quint8 line, quint8 direction) const;
    QString pgnRow(quint8 line, quint8 direction, const PGN &pgn) const;
    QString fdRows(const PGN &pgn) const;
    QString size(const char *singleLineName, int count) const;
    QString address(quint8 line) const;

    const PgnContext &context;
};
