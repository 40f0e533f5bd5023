#pragma once

#include <QString>

class CommonGeneratorHelperBase;
class PgnContext;
class PgnManagedVariables;

// The initialisation part of gen_pgn.c: the common and J1939 service init structures and the
// function j1939StackInit that hands them and the line configurations to the stack.
class PgnInitWriter
{
public:
    PgnInitWriter(const PgnContext &context, const PgnManagedVariables &variables,
                  const CommonGeneratorHelperBase &helper);

    // An empty line, the structures and the function.
    QString text() const;
    // The rows of the J1939 service init structure behind its version row, up to the closing brace.
    QString serviceInitRows() const;

private:
    QString serviceInitValues() const;
    QString functionHead() const;
    QString lineInits() const;
    QString cia510Inits() const;
    bool udsIsOn() const;
    QString watchdog() const;

    const PgnContext &context;
    const PgnManagedVariables &variables;
    const CommonGeneratorHelperBase &helper;
};
