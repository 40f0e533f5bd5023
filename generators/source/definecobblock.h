#pragma once

struct DefineContext;

// The COBs of each line of a multi-protocol project, summed over the protocols of the line.
class DefineCobBlock
{
public:
    explicit DefineCobBlock(DefineContext &context);
    void write();

private:
    int lineCount(quint8 line) const;

    DefineContext &context;
};
