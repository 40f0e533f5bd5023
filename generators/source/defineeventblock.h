#pragma once

struct DefineContext;

// How the stack calls the application: functions bound at compile time, the sleep mode, and the
// numbers of call-back functions registered at run time.
class DefineEventBlock
{
public:
    explicit DefineEventBlock(DefineContext &context);
    void write();

private:
    void writeStaticEvents();
    void writeSleep();
    void writeDynamicEvents();

    DefineContext &context;
};
