#pragma once

#include "generators/source/defineproject.h"
#include "generators/source/definestate.h"
#include "generators/source/definewriter.h"

class DefineFamily;

// What every block of gen_define.h works with, and the few rules that several blocks share.
struct DefineContext
{
    DefineProject &project;
    DefineWriter &out;
    DefineState &state;

    const DefineFamily &family() const { return out.family(); }
    // The multi-line code form of the protocol blocks: more than one line, or forced by the user.
    bool multi() const;
    // CORE_EVENT_DYNAMIC_CAN, once in the file: a value above 0, with profileFloor raised to what a
    // CiA profile device registers itself.
    void writeDynamicCan(qint64 value, bool profileFloor);

    // The editions whose header differs: raw CAN leaves out protocols it has no line of, the
    // EnergyBus wizard describes its devices.
    static bool rawCanEdition();
    static bool energyBusEdition();
};
