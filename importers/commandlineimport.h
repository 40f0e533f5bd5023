#pragma once

#include <QString>

class ObjectDataBase;

// The import of the command line option -i: an EDS, DCF, CSV or ICSV file into line 0 of the project,
// objects 0x1000 to 0xBFFF, on the importer's thread. Returns when that thread has ended; the caller lets
// the event loop run afterwards, so that the store's queued notifications arrive.
class CommandLineImport
{
public:
    // False for a file of another kind, or one that cannot be read; nothing is imported then.
    static bool run(ObjectDataBase &store, const QString &path);
};
