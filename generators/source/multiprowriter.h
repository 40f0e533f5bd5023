#pragma once

class MultiProContext;
class PGNGeneratorBase;
class QTextStream;

// The sections of a multi-protocol source in their order: head, J1939 blocks, object dictionary,
// raw CAN tables, initialisation and the function that overwrites the predefined connection set.
class MultiProWriter
{
public:
    MultiProWriter(MultiProContext &context, PGNGeneratorBase &pgn);

    void write(QTextStream &out);

private:
    MultiProContext &context;
    PGNGeneratorBase &pgn;
};
