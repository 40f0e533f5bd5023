#pragma once

#include <cstdint>

// Files give a big-endian signal by the position of its most significant bit; in memory every signal is
// placed by its least significant bit. Positions count byte times 8 plus the bit in that byte.
class MotorolaBits
{
public:
    static int32_t fileToMemory(int32_t fileStart, int32_t length);
    static int32_t memoryToFile(int32_t startBit, int32_t length);
};
