#include "icsvgenerator.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QRegularExpression>
#include <QTextStream>

ICSVGenerator::ICSVGenerator(QObject *parent)
    : CSVGenerator(parent)
{}

QString ICSVGenerator::generatorName() const
{
    return QStringLiteral("ICSV documentation");
}

QString ICSVGenerator::suffix() const
{
    return QStringLiteral("icsv");
}

QString ICSVGenerator::descriptionCell(const QString &description)
{
    static const QRegularExpression lineBreak(QStringLiteral("[\r\n]"));
    return QString(description).replace(lineBreak, Helper::csvDescLinebreak).simplified();
}

void ICSVGenerator::writeHead(QTextStream &out)
{
    out << tr("#\n") << tr("# This is an importable ICSV file for the %1 project.\n").arg(projectName)
        << tr("#\n");
    out << (documentation
                ? tr("index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,"
                     "value,description,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n")
                : tr("index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,"
                     "value,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n"));
}

void ICSVGenerator::writeObject(QTextStream &out, quint16 index, const INDEX_DATA_T &object)
{
    const auto subIndices = database->getSubIndices(line, index);
    const QString indexDataType = COHelper::index2DataTypeString(object.datatype);
    if (object.objecttype != 7 && !subIndices.isEmpty() && subIndices.first() == 0) {
        QString objectCode;
        if (object.objecttype == 8)
            objectCode = QStringLiteral("ARRAY");
        else if (object.objecttype == 9)
            objectCode = QStringLiteral("RECORD");
        out << indexText(index) << ',' << ',' << objectCode << ',' << indexDataType << ','
            << Helper::substituteVariables(object.name, index, 0, 0) << ',' << ",,,,,,";
        if (documentation)
            out << descriptionCell(object.description) << ',';
        out << ',' << ',' << ",,,," << '\n';
    }
    for (const quint8 subIndex : subIndices) {
        SUBINDEX_DATA_T sub;
        database->getSubIndex(line, index, subIndex, sub);
        const bool variable = subIndex == 0 && object.objecttype == 7;
        QStringList cells{
            indexText(index),
            subIndexText(subIndex),
            variable ? QStringLiteral("VARIABLE") : QString(),
            subIndex == 0 && object.objecttype == 8 ? indexDataType
                                                    : COHelper::index2DataTypeString(sub.datatype),
            Helper::substituteVariables(sub.name, index, subIndex, 0),
            sub.implementation == 2 ? Helper::substituteVariables(sub.varname, index, subIndex, 0)
                                    : QString(),
            sub.accesstype,
            sub.pdomapping.getCSVStringValue(),
            sub.defaultineds ? QStringLiteral("1") : QStringLiteral("0"),
            QString::number(int(sub.writedefaulttoeds)),
            valueText(sub.datatype, sub.defaultvalue)};
        if (documentation)
            cells << descriptionCell(variable ? object.description : sub.description);
        cells << QString::number(sub.size) << implementationText(sub.implementation) << yesNo(sub.limitineds)
              << sub.lowlimit << sub.uplimit << yesNo(sub.nvstorage);
        out << cells.join(',') << '\n';
    }
    out << " \n";
}
