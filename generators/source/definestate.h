#pragma once

#include <QtGlobal>

// What the blocks of one gen_define.h run know of the project and of each other: the facts read
// before the first block, and the macros that several blocks may write but the file holds once.
struct DefineState
{
    bool hasJ1939 = false;
    bool multiProtocol = false;
    bool forcedMultiLine = false;
    bool canFd = false;
    // A line's device type is a CiA profile (401 or above).
    bool profileSeen = false;
    quint8 lineCount = 0;
    qint32 generationCount = 0;

    bool multiLineWritten = false;
    bool bufferCountsWritten = false;
    bool inhibitWritten = false;
    bool sdoServerCntWritten = false;
    bool sdoClientCntWritten = false;
    bool dynamicCanWritten = false;
};
