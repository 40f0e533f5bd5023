#pragma once

#include <QString>

class ObjDictContext;
class QTextStream;

// The function that puts the project's own COB-IDs over those that the stack derives from the node ID,
// for the lines whose overwrite_predef setting is on.
class ObjDictPredefWriter
{
public:
    explicit ObjDictPredefWriter(const ObjDictContext &context);

    void write(QTextStream &out) const;

private:
    void writeSingleLine(QTextStream &out) const;
    void writeMultiLine(QTextStream &out) const;
    // The copies of the COB-IDs of one line, in the group order of the form.
    QString lineBlocks(quint8 line, bool multiLine) const;
    QString group(quint8 line, quint16 first, quint16 last, const QString &title, bool bothSubIndices,
                  bool multiLine) const;
    QString copyBlock(quint8 line, quint16 index, int subIndex, bool multiLine) const;
    bool usesNodeId(quint8 line) const;
    QString opening(const QString &signature) const;

    const ObjDictContext &context;
};
