#include "pgnsignal.h"

#include "store/protocolrecords.h"

PgnSignal PgnSignal::fromSpn(const SPN &spn)
{
    PgnSignal signal;
    signal.owner = spn.pgnnumber;
    signal.number = spn.spnnumber;
    signal.datatype = spn.datatype;
    signal.implementation = spn.implementation;
    signal.varname = spn.varname;
    signal.defaultvalue = spn.defaultvalue;
    signal.name = spn.name;
    signal.bitsize = spn.bitsize;
    signal.bitposition = spn.bitposition;
    return signal;
}

PgnSignal PgnSignal::fromDataElement(const DataElement &element)
{
    PgnSignal signal;
    signal.owner = element.canid;
    signal.number = element.number;
    signal.datatype = element.datatype;
    signal.implementation = element.implementation;
    signal.varname = element.varname;
    signal.defaultvalue = element.defaultvalue;
    signal.name = element.name;
    signal.bitsize = element.bitsize;
    signal.bitposition = element.bitpos;
    signal.rawCan = true;
    return signal;
}
