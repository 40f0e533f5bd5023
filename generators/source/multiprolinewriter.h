#pragma once

#include <QString>

class MultiProContext;
class ObjDictServiceCalls;

// The functions of the multi-line form that start one line each, and the finish function that runs
// after all lines.
class MultiProLineWriter
{
public:
    MultiProLineWriter(const MultiProContext &context, const ObjDictServiceCalls &calls);

    // Every line's function; the object dictionary rows of the lines are counted off in line order.
    QString lineFunctions() const;
    QString finishFunction() const;

private:
    QString head(quint8 line, int type) const;
    QString body(quint8 line, int type, int &odStart) const;
    QString canopenInit(quint8 line, int &odStart) const;
    QString canopenBranch(quint8 line, int &odStart) const;
    QString j1939Branch(quint8 line, int &odStart) const;
    QString rawCanBranch(quint8 line) const;
    QString cia510Part(quint8 line, int &odStart) const;
    QString isotpPart() const;
    QString udsLineInit(quint8 line) const;
    // The protocol the line was started with, as a condition reads it.
    QString protocolOf() const;

    const MultiProContext &context;
    const ObjDictServiceCalls &calls;
};
