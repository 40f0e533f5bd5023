#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

class ObjDictContext;
class QTextStream;

// The constant arrays of gen_objdict.c: every default value and limit once per type, and the
// constant strings.
class ObjDictConstantWriter
{
public:
    explicit ObjDictConstantWriter(ObjDictContext &context);

    void write(QTextStream &out);

private:
    // The slot of a value in the array of its type; a value that the array holds already is shared.
    quint32 slotOf(int array, const QString &row);
    void writeArray(QTextStream &out, const QString &type, const QString &name, const QStringList &rows,
                    const QString &separator);

    ObjDictContext &context;
    QList<QStringList> rows;
    QList<QHash<QString, quint32>> slotsByRow;
};
