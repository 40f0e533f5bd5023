#pragma once

#include <QList>
#include <QString>

class ObjDictContext;
class ObjDictModel;
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

    // The rows of the service count structure from the object counts to the node-IDs, each behind the
    // indent; the USDO rows only where the generation knows them.
    static QString countRows(const QString &indent, bool usdo);
    // PDOs are routed between the lines: the lines have routing entries in 0x1F2C and RPDO mappings
    // of which at least one may change at run time.
    static bool pdoRouting(const ObjDictModel &model, const QList<quint8> &lines);

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
