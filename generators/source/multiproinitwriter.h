#pragma once

#include <QString>

class MultiProContext;
class ObjDictServiceCalls;
class PGNGeneratorBase;

// The initialisation part of a multi-protocol source: the init structures of the stack's modules and
// the function that starts the whole stack, mpStackInit or its raw CAN or bootloader counterpart.
class MultiProInitWriter
{
public:
    // The PGN generator has its blocks open when the project has J1939.
    MultiProInitWriter(const MultiProContext &context, const ObjDictServiceCalls &calls,
                       const PGNGeneratorBase &pgn);

    QString structures() const;
    QString mainFunction() const;

private:
    QString rawCanInitVars() const;
    QString canopenInitVars() const;
    QString j1939InitVars() const;
    // The head of the entry function, or of the older generation's common function, up to the
    // declarations and the empty line behind them.
    QString functionHead(const QString &name, bool lineVariable) const;
    QString stackStart() const;
    QString multiLineBody() const;
    QString multiLineCommonPart() const;
    QString rawCanMultiLineBody() const;
    QString lineCalls(const QString &function) const;
    QString finishCall(const QString &function) const;
    QString olderMultiLineFunctions() const;
    QString singleLineBody() const;
    QString singleLineProtocols() const;
    QString protocolCheck() const;
    QString guardedCANopen() const;
    QString guardedJ1939() const;
    QString guardedRawCan(bool comment) const;

    const MultiProContext &context;
    const ObjDictServiceCalls &calls;
    const PGNGeneratorBase &pgn;
};
