#pragma once

#include <QList>
#include <QString>

#include <functional>

struct DefineContext;

// The J1939 part of gen_define.h: the parameter group counts per line, the CiA 510 SDO counts, the
// features of the J1939 stack (in DefineJ1939Features) and the COBs that J1939 lines take.
class DefineJ1939Block
{
public:
    explicit DefineJ1939Block(DefineContext &context);
    void write();

private:
    // Per line: the receive configurations, the receive buffers (one per source address), transmits.
    struct PgnCounts
    {
        qint64 received = 0;
        qint64 receiveBuffers = 0;
        qint64 transmitted = 0;
        bool multiSource = false;
    };

    PgnCounts pgnCounts(quint8 line) const;
    qint64 safePgns(quint8 line, quint8 direction) const;
    void writeSafety();
    void writeSingleLineCounts();
    void writeSingleLineSafety();
    void writeSingleLineSdoCounts();
    void writeMultiLineCounts();
    void writeMultiLineSafety();
    void writeInhibit();
    void writeCobDefinitions();
    void writeBufferCounts();
    // ", 1u, 2u" less its first character: the form of the per-line lists of this block.
    static QString blankList(const QList<qint64> &values);

    DefineContext &context;
};
