#pragma once

#include <QList>

// The bit ranges that the signals of one message occupy, to find those that share bits.
class ModelCheckBitRanges
{
public:
    // Whether [start, end) shares a bit with a range added before; the range is added either way.
    bool overlapsAndAdd(quint32 start, quint32 end);

private:
    struct Range
    {
        quint32 start;
        quint32 end;
    };
    QList<Range> ranges;
};
