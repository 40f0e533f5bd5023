#pragma once

class ObjDictContext;
class QTextStream;

// The opening of gen_objdict.c up to the object counts, and the companion header gen_user.h.
class ObjDictHeadWriter
{
public:
    explicit ObjDictHeadWriter(const ObjDictContext &context);

    void write(QTextStream &out) const;
    // Writes gen_user.h when string defaults are generated, and removes an old one otherwise.
    void updateUserHeader() const;

private:
    void writeIncludes(QTextStream &out) const;
    void writePrototypes(QTextStream &out) const;
    void writeApplicationHeaders(QTextStream &out) const;
    void writeMemorySpecifiers(QTextStream &out) const;
    void writeStaticIndications(QTextStream &out) const;
    void writeCounts(QTextStream &out) const;
    bool udsOn() const;

    const ObjDictContext &context;
};
