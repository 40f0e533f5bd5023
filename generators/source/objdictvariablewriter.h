#pragma once

#include <QList>
#include <QString>

class ObjDictContext;
class QTextStream;

// The variables of gen_objdict.c: the managed variables that the file owns, and the pointers to the
// application's variables. Each sub-index gets its slot in the array of its type.
class ObjDictVariableWriter
{
public:
    explicit ObjDictVariableWriter(ObjDictContext &context);

    void writeManaged(QTextStream &out);
    void writeApplication(QTextStream &out);

private:
    struct Row
    {
        QString text;
        quint32 key;
    };
    struct StringRow
    {
        QString name;
        quint32 size;
    };

    static bool ownedByStack(quint16 index, quint8 subIndex);
    void writeArray(QTextStream &out, const QString &opening, const QString &name, const QList<Row> &rows,
                    bool initialised);
    void writeStrings(QTextStream &out, const QString &opening, const QString &name,
                      const QString &lengthType, const QList<StringRow> &rows);
    void writeDomains(QTextStream &out, int count);

    ObjDictContext &context;
};
