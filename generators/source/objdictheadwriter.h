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
    // Writes gen_user.h when `wanted`, removes it otherwise; `separated` puts an empty line between
    // the includes and the prototypes.
    static void updateUserHeader(const ObjDictContext &context, bool wanted, bool separated);

    void writeMemorySpecifiers(QTextStream &out) const;
    void writeStaticIndications(QTextStream &out) const;

private:
    void writeIncludes(QTextStream &out) const;
    void writePrototypes(QTextStream &out) const;
    void writeApplicationHeaders(QTextStream &out) const;
    void writeCounts(QTextStream &out) const;
    bool udsOn() const;

    const ObjDictContext &context;
};
