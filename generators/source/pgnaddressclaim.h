#pragma once

#include <QString>

class ObjectDataBase;
class PgnContext;
class PgnManagedVariables;

// The address claiming group 60928 (0xEE00), which sends the device's NAME. The project doesn't edit
// it: a run writes it from the J1939 name settings before the sources are generated.
class PgnAddressClaim
{
public:
    static constexpr quint32 Pgn = 60928;

    // Adds the group with its nine NAME fields to every line that claims an address: a J1939 line, or
    // any line with at least two transmit PGNs.
    static void declare(ObjectDataBase &store);
    // Run-time assignments of the NAME fields to their managed slots, for projects whose managed
    // arrays are not initialised where they are defined.
    static QString assignments(const PgnContext &context, const PgnManagedVariables &variables);
    // The assignments under their comment, as an init function writes them.
    static QString initialisation(const PgnContext &context, const PgnManagedVariables &variables);
};
