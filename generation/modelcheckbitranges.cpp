#include "modelcheckbitranges.h"

bool ModelCheckBitRanges::overlapsAndAdd(quint32 start, quint32 end)
{
    bool overlaps = false;
    for (const auto &range : std::as_const(ranges)) {
        if (start < range.end && range.start < end) {
            overlaps = true;
            break;
        }
    }
    ranges.append({start, end});
    return overlaps;
}
