#include "motorolabits.h"

// The arithmetic runs in 64 bits, so that absurd positions from a damaged file cannot overflow; C++
// division truncates and the remainder takes the sign of the dividend, which the formulas rely on.

int32_t MotorolaBits::fileToMemory(int32_t fileStart, int32_t length)
{
    const int64_t s = fileStart;
    const int64_t q = s % 8 - (s / 8) * 8 - length;
    return int32_t((q + 57) % 8 + (7 - (q + 57) / 8) * 8);
}

int32_t MotorolaBits::memoryToFile(int32_t startBit, int32_t length)
{
    const int64_t s = startBit;
    const int64_t p = (s / 8) * 8 + 8 - length - s % 8;
    return int32_t((p / 8) * 8 - p % 8 + 7);
}
