#pragma once

#include <QtGlobal>

struct DefineContext;

// The sizes of the tables of virtual objects, whose values live in memory that the stack reaches
// through gen_vobjdict.c.
class DefineVirtualBlock
{
public:
    explicit DefineVirtualBlock(DefineContext &context);
    void write();

private:
    void writeTypeCounts();
    void writeTableSizes();

    DefineContext &context;
};
