#pragma once

#include <QtGlobal>

struct DefineContext;

// The second half of the CANopen block: PDOs, SRDOs, MPDOs, the error control and emergency
// services, SDO options, storage and the COB total.
class DefinePdoBlock
{
public:
    explicit DefinePdoBlock(DefineContext &context);
    void write(bool extendedTypes, bool utf8Type);

private:
    void writePdos();
    void writeSrdos();
    void writeSrdoEntries();
    void writeMpdos();
    void writeMasterServices();
    void writeEmergency();
    void writeSdoOptions();
    void writeClosing(bool extendedTypes, bool utf8Type);
    void writeNvsCounts();
    bool anyLineHas(quint16 index) const;
    // Sum over the lines of subs0 less 1 of an object, for the objects with more than sub-index 0.
    qint64 entriesBehindSubZero(quint16 index) const;

    DefineContext &context;
    bool samSeen = false;
};
