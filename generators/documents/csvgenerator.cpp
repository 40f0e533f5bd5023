#include "csvgenerator.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"
#include "texttools/filepermissions.h"
#include "texttools/helper.h"

#include <QDebug>
#include <QFileInfo>
#include <QLocale>
#include <QTextStream>
#include <QThread>

namespace {

// How the value cell reads a default value of a data type.
enum class ValueForm
{
    Text,
    Signed32,
    Unsigned16,
    Unsigned32,
    Signed64,
    Unsigned64,
    Real32,
    Real64
};

const std::pair<quint16, ValueForm> valueForms[] = {
    {2, ValueForm::Signed32},     {3, ValueForm::Signed32},     {4, ValueForm::Signed32},
    {16, ValueForm::Signed32},    {5, ValueForm::Unsigned16},   {18, ValueForm::Unsigned16},
    {100, ValueForm::Unsigned16}, {101, ValueForm::Unsigned16}, {102, ValueForm::Unsigned16},
    {103, ValueForm::Unsigned16}, {104, ValueForm::Unsigned16}, {105, ValueForm::Unsigned16},
    {6, ValueForm::Unsigned32},   {7, ValueForm::Unsigned32},   {22, ValueForm::Unsigned32},
    {106, ValueForm::Unsigned32}, {107, ValueForm::Unsigned32}, {108, ValueForm::Unsigned32},
    {109, ValueForm::Unsigned32}, {110, ValueForm::Unsigned32}, {111, ValueForm::Unsigned32},
    {112, ValueForm::Unsigned32}, {117, ValueForm::Unsigned32}, {118, ValueForm::Unsigned32},
    {119, ValueForm::Unsigned32}, {8, ValueForm::Real32},       {17, ValueForm::Real64},
    {21, ValueForm::Signed64},    {24, ValueForm::Unsigned64},  {25, ValueForm::Unsigned64},
    {27, ValueForm::Unsigned64},
};

ValueForm valueForm(quint16 dataType)
{
    for (const auto &[type, form] : valueForms) {
        if (type == dataType)
            return form;
    }
    return ValueForm::Text;
}

const char *const implementationNames[] = {"ManagedVariable", "ManagedConst", "Variable", "VirtualObject"};

} // namespace

CSVGenerator::CSVGenerator(QObject *parent)
    : AbstractGenerator(parent)
{}

QString CSVGenerator::suffix() const
{
    return QStringLiteral("csv");
}

bool CSVGenerator::isOutputWritable()
{
    const QString file = QStringLiteral("%1/%2.%3").arg(outputPath, projectName, suffix());
    return !QFileInfo::exists(file) || FilePermissions::isWritable(file);
}

QString CSVGenerator::outputFile() const
{
    if (multiLine)
        return QStringLiteral("%1/%2_%3.%4").arg(outputPath, projectName, QString::number(line), suffix());
    return QStringLiteral("%1/%2.%3").arg(outputPath, projectName, suffix());
}

QString CSVGenerator::generatorName() const
{
    return QStringLiteral("CSV documentation");
}

QString CSVGenerator::valueText(quint16 dataType, const QString &value)
{
    bool ok = false;
    QString number;
    switch (valueForm(dataType)) {
    case ValueForm::Text:
        return value;
    case ValueForm::Signed32:
        number = QString::number(value.toInt(&ok, 0));
        break;
    case ValueForm::Unsigned16:
        number = QString::number(value.toUShort(&ok, 0));
        break;
    case ValueForm::Unsigned32:
        number = QString::number(value.toUInt(&ok, 0));
        break;
    case ValueForm::Signed64:
        number = QString::number(value.toLongLong(&ok, 0));
        break;
    case ValueForm::Unsigned64:
        number = QString::number(value.toULongLong(&ok, 0));
        break;
    case ValueForm::Real32:
        number = QString::number(value.toFloat(&ok), 'g', QLocale::FloatingPointShortest);
        break;
    case ValueForm::Real64:
        number = QString::number(value.toDouble(&ok), 'g', QLocale::FloatingPointShortest);
        break;
    }
    return ok ? number : value;
}

QString CSVGenerator::implementationText(quint8 implementation)
{
    return implementation < std::size(implementationNames)
               ? QLatin1String(implementationNames[implementation])
               : QString();
}

QString CSVGenerator::yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString CSVGenerator::indexText(quint16 index)
{
    return QStringLiteral("0x%1").arg(index, 4, 16, QChar('0'));
}

QString CSVGenerator::subIndexText(quint8 subIndex)
{
    return QStringLiteral("0x%1").arg(subIndex, 2, 16, QChar('0'));
}

QString CSVGenerator::quoted(const QString &text)
{
    return '"' + QString(text).replace('"', QLatin1String("\"\"")) + '"';
}

void CSVGenerator::writeContent(QTextStream &out)
{
    writeHead(out);
    const auto indices = database->getIndices(line, 0x1000, 0xFFFF);
    for (const quint16 index : indices) {
        if (abortRequested) {
            qDebug() << "Generation aborted";
            break;
        }
        // An empty line in front of the manufacturer and the profile objects; one object may pass both.
        if (beforeManufacturerObjects && index >= 0x2000) {
            out << " \n";
            beforeManufacturerObjects = false;
        }
        if (beforeProfileObjects && index >= 0x6000) {
            out << " \n";
            beforeProfileObjects = false;
        }
        INDEX_DATA_T object;
        database->getIndex(line, index, object);
        writeObject(out, index, object);
        QThread::yieldCurrentThread();
    }
}

void CSVGenerator::writeHead(QTextStream &out)
{
    out << "Index,Sub,EDSname,Datatype,Access,Value,varname,LowLimit,UpLimit,hasDefault,hasLimit,refuseRead,"
           "refuseWrite,defaultInEDS,implementation,Size,ObjectCode,mapable\n";
}

void CSVGenerator::writeObject(QTextStream &out, quint16 index, const INDEX_DATA_T &object)
{
    const QString objectName = Helper::substituteVariables(object.name, index, 0, 0);
    const auto subIndices = database->getSubIndices(line, index);
    for (const quint8 subIndex : subIndices) {
        SUBINDEX_DATA_T sub;
        database->getSubIndex(line, index, subIndex, sub);
        QString name = objectName;
        if (object.objecttype != 7)
            name += ' ' + Helper::substituteVariables(sub.name, index, subIndex, 0);
        const QString varName = sub.implementation == 2
                                    ? Helper::substituteVariables(sub.varname, index, subIndex, 0)
                                    : QStringLiteral("NONE");
        QString objectCode;
        if (subIndex == 0 && object.objecttype == 8)
            objectCode = QStringLiteral("ARRAY");
        else if (subIndex == 0 && object.objecttype == 9)
            objectCode = QStringLiteral("RECORD");
        const QStringList cells{indexText(index),
                                subIndexText(subIndex),
                                quoted(name),
                                COHelper::index2DataTypeString(sub.datatype),
                                sub.accesstype,
                                valueText(sub.datatype, sub.defaultvalue),
                                quoted(varName),
                                sub.lowlimit,
                                sub.uplimit,
                                yesNo(sub.defaultineds),
                                yesNo(sub.limitineds),
                                yesNo(sub.refuseread),
                                yesNo(sub.refusewrite),
                                QString::number(int(sub.writedefaulttoeds)),
                                implementationText(sub.implementation),
                                QString::number(sub.size),
                                objectCode,
                                sub.pdomapping.getCSVStringValue()};
        out << cells.join(',') << '\n';
    }
}
