#pragma once

#include <QString>

class ObjDictContext;
class ObjDictPdoTables;
class QTextStream;

// The calls of the init functions that start one stack service each, written only for the services
// whose objects the dictionary holds.
class ObjDictServiceCalls
{
public:
    ObjDictServiceCalls(const ObjDictContext &context, const ObjDictPdoTables &pdoTables);

    // The four lines that end the init function when a call fails, with extra blanks ahead.
    static QString check(int extraBlanks = 0);

    // The calls of the single-line form, on line 0.
    void writeSingleLine(QTextStream &out) const;
    // The calls of one line's init function; odStart is the line's first row of od_assign.
    void writeLine(QTextStream &out, quint8 line, int odStart, bool dynamicMaster) const;
    // The block that registers the function that loads the stored parameters.
    void writeLoadParameter(QTextStream &out, bool multiLine) const;

private:
    void writeErrorControlToTime(QTextStream &out, quint8 line, const QString &lineArgument) const;
    void writePdos(QTextStream &out, quint8 line) const;
    QString constSlot(quint8 line, quint16 index, quint8 subIndex) const;
    // ", od_const_<array>[slot]" of an optional PDO parameter, or ", 0u" when it is missing.
    QString optionalParameter(quint8 line, quint16 index, quint8 subIndex, const char *array) const;
    qint64 number(const char *key) const;

    const ObjDictContext &context;
    const ObjDictPdoTables &pdoTables;
};
