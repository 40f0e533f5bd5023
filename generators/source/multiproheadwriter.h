#pragma once

class MultiProContext;
class QTextStream;

// The opening of a multi-protocol source up to the object counts, and its companion gen_user.h.
class MultiProHeadWriter
{
public:
    explicit MultiProHeadWriter(const MultiProContext &context);

    void write(QTextStream &out) const;

private:
    void writeIncludes(QTextStream &out) const;
    void writeApplicationHeaders(QTextStream &out) const;
    // Writes or removes gen_user.h; true when the source includes it.
    bool updateUserHeader() const;
    void writePrototypes(QTextStream &out) const;
    void writeObjectCounts(QTextStream &out) const;

    const MultiProContext &context;
};
