#pragma once

class ObjDictContext;
class QTextStream;

// Default values of application strings, kept in flash and copied into the variables on request.
class ObjDictStringDefaults
{
public:
    explicit ObjDictStringDefaults(ObjDictContext &context);

    // The table stringDefaultValues; nothing when no application string exists.
    void writeTable(QTextStream &out);
    // userOverwriteStringDefaultvalues, which copies the table into the variables.
    void writeFunction(QTextStream &out) const;

private:
    ObjDictContext &context;
};
