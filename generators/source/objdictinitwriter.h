#pragma once

#include <QString>

class ObjDictContext;
class ObjDictServiceCalls;
class QTextStream;

// The functions that start the stack on the tables: coCanOpenStackInit in the single-line or the
// multi-line form, or j1939OdInit for the SDO server of a J1939 project.
class ObjDictInitWriter
{
public:
    ObjDictInitWriter(const ObjDictContext &context, const ObjDictServiceCalls &calls);

    void writeSingleLine(QTextStream &out) const;
    void writeMultiLine(QTextStream &out) const;
    void writeJ1939OdInit(QTextStream &out) const;

private:
    // The structure of service counts; the older generation writes it as a local with its own indent.
    QString serviceInitVars(bool local) const;
    void writeCommonFunction(QTextStream &out) const;
    void writeLineSwitch(QTextStream &out) const;
    void writeFinishFunction(QTextStream &out) const;
    QString commonInitText() const;
    QString udsDeclarations() const;
    QString udsCommonInit() const;
    QString udsLineInit(quint8 line, bool multiLine) const;
    bool udsOn() const;
    bool newInitStructure() const;

    const ObjDictContext &context;
    const ObjDictServiceCalls &calls;
};
