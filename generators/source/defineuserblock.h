#pragma once

struct DefineContext;

// The user's own defines, the generation counter and the switch of the predefined connection set.
class DefineUserBlock
{
public:
    explicit DefineUserBlock(DefineContext &context);
    void write();

private:
    DefineContext &context;
};
