#pragma once

#include <QtGlobal>

class ObjectDataBase;

// An EDS may declare more PDOs than it has objects for. Creates the communication and mapping objects
// that the declared counts ask for and the line lacks, from templates; objects outside the index range
// of the import are left out.
class PdoCompletion
{
public:
    static void complete(ObjectDataBase &store, quint8 line, quint32 receiveCount, quint32 transmitCount,
                         quint32 lowIndex, quint32 highIndex);
};
