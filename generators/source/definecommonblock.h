#pragma once

struct DefineContext;

// The settings of the stack core that every protocol shares: user messages, COB list, CAN queues.
class DefineCommonBlock
{
public:
    explicit DefineCommonBlock(DefineContext &context);
    void write();

private:
    DefineContext &context;
};
