#pragma once

#include <QtGlobal>

// An object or one sub-index named by a command of a CSV table.
struct CsvObjectRef
{
    quint16 index = 0;
    quint8 subIndex = 0;
    bool wholeObject = false;

    bool operator==(const CsvObjectRef &) const = default;
};
