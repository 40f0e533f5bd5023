#pragma once

#include <QString>

class ObjectDataBase;

// Brings the ";;" comment lines that the EDS writer puts behind the keys of a section back as the
// description of that object or sub-index. Comments of a section whose object the line lacks are dropped.
class EdsCommentReader
{
public:
    // False when the file cannot be read.
    static bool apply(const QString &fileName, ObjectDataBase &store, quint8 line);
};
