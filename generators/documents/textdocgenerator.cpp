#include "textdocgenerator.h"

#include "busmodel/cohelper.h"
#include "generators/documents/documenttext.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QDebug>
#include <QTextStream>
#include <QThread>

QString TextDocGenerator::outputFile() const
{
    if (multiLine)
        return QStringLiteral("%1/%2_%3.txt").arg(outputPath, projectName).arg(line);
    return filePath(QStringLiteral("%1/%2_doc.txt"));
}

void TextDocGenerator::writeContent(QTextStream &out)
{
    out << QStringLiteral("CANopen Object Dictionary Documenation for %1").arg(projectName) << "\n\n";
    if (!database)
        return;
    const QList<quint16> indices = database->getIndices(line, 0x1000, 0xFFFF);
    for (const quint16 index : indices) {
        if (abortRequested) {
            qDebug() << "Generation aborted";
            break;
        }
        writeObject(out, index);
        const QList<quint8> subIndices = database->getSubIndices(line, index);
        for (const quint8 subIndex : subIndices)
            writeSubIndex(out, index, subIndex);
        // Each object goes out whole, so that an abort leaves a file that ends behind an object.
        out.flush();
        QThread::yieldCurrentThread();
    }
}

void TextDocGenerator::writeObject(QTextStream &out, quint16 index)
{
    INDEX_DATA_T object;
    database->getIndex(line, index, object);
    out << "\nIndex:       " << DocumentText::hex(index, 4) << " - "
        << Helper::substituteVariables(object.name, index, 0, line) << '\n'
        << "DataType:    " << COHelper::index2DataTypeString(object.datatype) << '\n'
        << "ObjectCode:  " << COHelper::objectCode2String(object.objecttype) << '\n';
    if (!object.description.isEmpty())
        out << "Description: " << object.description << '\n';
}

void TextDocGenerator::writeSubIndex(QTextStream &out, quint16 index, quint8 subIndex)
{
    SUBINDEX_DATA_T sub;
    database->getSubIndex(line, index, subIndex, sub);
    out << "  Sub:          " << DocumentText::hex(subIndex, 2) << " - "
        << Helper::substituteVariables(sub.name, index, subIndex, line) << '\n'
        << "  DataType:     " << COHelper::index2DataTypeString(sub.datatype) << '\n';
    if (!sub.defaultvalue.isEmpty())
        out << "  DefaultValue: " << sub.defaultvalue << '\n';
    out << "  AccessType:   " << sub.accesstype << '\n'
        << "  PDOMapping:   " << sub.pdomapping.toUInt() << '\n';
    if (!sub.description.isEmpty())
        out << "  Description: " << sub.description << '\n';
}
