#pragma once

class ObjDictContext;
class QTextStream;

// The tables through which the stack finds the values: od_description with a row per sub-index,
// od_assign with a row per object, and od_data_variables that binds the arrays.
class ObjDictTableWriter
{
public:
    explicit ObjDictTableWriter(ObjDictContext &context);

    void writeDescription(QTextStream &out);
    void writeAssignment(QTextStream &out) const;
    void writeDataVariables(QTextStream &out) const;

private:
    ObjDictContext &context;
};
