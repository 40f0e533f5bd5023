#include "xddimporter.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"

#include <QDebug>
#include <QFile>
#include <QXmlStreamReader>

namespace {

const std::pair<const char *, PDOMappingType> pdoAccess[] = {
    {"no", Forbidden},
    {"t", TPDO},
    {"r", RPDO},
    {"tr", Allowed},
};

// A hexadecimal attribute, with or without "0x".
uint hexAttribute(const QXmlStreamAttributes &attributes, const char *name, uint fallback, bool *ok = nullptr)
{
    QString text = attributes.value(QLatin1String(name)).toString().trimmed();
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        text = text.mid(2);
    bool read = false;
    const uint value = text.toUInt(&read, 16);
    if (ok)
        *ok = read;
    return read ? value : fallback;
}

QString textAttribute(const QXmlStreamAttributes &attributes, const char *name, const char *fallback = "")
{
    return attributes.hasAttribute(QLatin1String(name)) ? attributes.value(QLatin1String(name)).toString()
                                                        : QString::fromLatin1(fallback);
}

} // namespace

XDDImporter::XDDImporter(QObject *parent)
    : BaseDataImporter(parent)
{}

void XDDImporter::doImport()
{
    beginImport();
    if (database && !fileName.isEmpty())
        readFile();
    endImport();
}

void XDDImporter::readFile()
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const quint8 previousLine = database->getDescriptionLine();
    database->setDescriptionLine(line);
    QXmlStreamReader xml(&file);
    bool valid = false;
    quint16 index = 0;
    while (!xml.atEnd() && !xml.hasError()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        if (name == QLatin1String("productName")) {
            database->setDescriptionSetting(QStringLiteral("ProductName"), xml.readElementText());
        } else if (name == QLatin1String("CANopenFDDataObject")) {
            valid = true;
            index = addObject(xml);
        } else if (name == QLatin1String("CANopenFDDataElement") && index != 0) {
            addEntry(xml, index);
        }
    }
    database->setDescriptionLine(previousLine);
    if (!valid) {
        qDebug() << Q_FUNC_INFO << "no cia 1311";
        emit importError(tr("%1 has is not in CiA 1311 XDD format.").arg(fileName));
    }
    if (xml.hasError())
        emit importError(xml.errorString());
}

quint16 XDDImporter::addObject(const QXmlStreamReader &xml)
{
    const auto attributes = xml.attributes();
    bool ok = false;
    const uint index = hexAttribute(attributes, "index", 0, &ok);
    if (!ok || index == 0 || index > 0xFFFF)
        return 0;
    INDEX_DATA_T object;
    object.name = textAttribute(attributes, "name");
    bool numeric = false;
    const uint objectType = attributes.value(QLatin1String("objectType")).toUInt(&numeric, 10);
    object.objecttype = numeric ? objectType : 7;
    object.datatype = quint16(hexAttribute(attributes, "dataType", 5));
    database->addIndex(line, quint16(index), object);
    return quint16(index);
}

void XDDImporter::addEntry(const QXmlStreamReader &xml, quint16 index)
{
    const auto attributes = xml.attributes();
    bool ok = false;
    const uint subIndex = hexAttribute(attributes, "subIndex", 0, &ok);
    if (!ok || subIndex > 0xFF)
        return;
    SUBINDEX_DATA_T data = newSubIndexRecord();
    data.name = textAttribute(attributes, "name");
    data.datatype = quint16(hexAttribute(attributes, "dataType", 5));
    data.defaultvalue = textAttribute(attributes, "defaultValue");
    data.defaultineds = !data.defaultvalue.isEmpty();
    data.writedefaulttoeds = !data.defaultvalue.isEmpty();
    data.pdomapping = PDOMapping(Forbidden);

    const QString usdo = textAttribute(attributes, "accessUSDO", "ro");
    const QString pdo = textAttribute(attributes, "accessPDO", "no");
    if (textAttribute(attributes, "modification", "true") == QLatin1String("false")) {
        data.accesstype = QStringLiteral("const");
        data.implementation = 1;
    } else {
        data.implementation = 0;
        for (const auto &[text, mapping] : pdoAccess) {
            if (pdo == QLatin1String(text))
                data.pdomapping = PDOMapping(mapping);
        }
        if (usdo == QLatin1String("ro") || usdo == QLatin1String("wo"))
            data.accesstype = usdo;
        else if (usdo == QLatin1String("rw"))
            data.accesstype = pdo == QLatin1String("t")   ? QStringLiteral("rwr")
                              : pdo == QLatin1String("r") ? QStringLiteral("rww")
                                                          : QStringLiteral("rw");
    }

    const QString low = textAttribute(attributes, "lowLimit");
    const QString high = textAttribute(attributes, "highLimit");
    data.limitineds = !low.isEmpty() || !high.isEmpty();
    if (data.limitineds) {
        data.lowlimit = low;
        data.uplimit = high;
    } else {
        COHelper::getDefaultLimits(data.datatype, data.lowlimit, data.uplimit);
    }
    database->addSubIndex(line, index, quint8(subIndex), data);
}
