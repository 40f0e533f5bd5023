#pragma once

#include <QString>

struct DefineContext;

// The include guard, the tool that wrote the file and the versions of the stack's init structures.
class DefineHeadBlock
{
public:
    explicit DefineHeadBlock(DefineContext &context);
    void write(const QString &toolVersion);

private:
    void writeToolBlock(const QString &toolVersion);
    void writeVersionBlock();

    DefineContext &context;
};
