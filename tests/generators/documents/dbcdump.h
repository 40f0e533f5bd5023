#pragma once

#include <QString>

class CANdbDatabase;

// A canonical text of everything a database holds that a DBC file carries, one record a line, so that
// tests compare whole databases: nodes, messages with their signals, variables, definitions, attribute
// values, comments and value names.
QString dumpDatabase(const CANdbDatabase &database);
// Numbers as the DBC writer puts them down ("%.11g").
QString dbcNumber(double value);
