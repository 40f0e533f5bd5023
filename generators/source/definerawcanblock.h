#pragma once

struct DefineContext;

// The raw CAN part of gen_define.h: the CAN-IDs per line and the indications of the raw CAN stack.
class DefineRawCanBlock
{
public:
    explicit DefineRawCanBlock(DefineContext &context);
    void write();

private:
    void writeIdCounts();
    void writeIndications();
    void writeInhibit();

    DefineContext &context;
};
