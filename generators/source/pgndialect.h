#pragma once

// What the two stack generations write differently into the J1939 blocks of gen_pgn.c and gen_mp.c.
struct PgnDialect
{
    // Behind the title line of gen_pgn.c.
    const char *titleMark;
    const char *constMacro;
    const char *watchdogMacro;
    const char *lineCountMacro;
    const char *isotpInclude;
    // The function that starts the stack core with commonInitVars.
    const char *stackStart;
    const char *receiveSizeName;
    bool applicationHeaders;
    // The current generation keeps the mapping rows free of pointers: row k of a parallel data table
    // says where signal k lies in memory, and the configuration rows point at both tables. The older
    // one has the pointer in the mapping row and a configuration row of six fields.
    bool dataTables;
    // The older generation has a structure of its own for projects without the new init structure.
    bool olderServiceValues;
};
