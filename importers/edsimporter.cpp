#include "edsimporter.h"

#include "busmodel/cohelper.h"
#include "busmodel/edsparser.h"
#include "importers/edscommentreader.h"
#include "importers/edsdescriptionreader.h"
#include "importers/pdocompletion.h"
#include "store/objectdatabase.h"

#include <QDebug>

namespace {

constexpr quint16 domainType = 15;

PDOMapping mappingOf(const CANopenSubindex &entry)
{
    if (!entry.pdoMapping)
        return PDOMapping(Forbidden);
    // The access type tells the direction in which the entry can travel.
    const QString &access = entry.accessType;
    if (access == QLatin1String("ro") || access == QLatin1String("rwr"))
        return PDOMapping(TPDO);
    if (access == QLatin1String("wo") || access == QLatin1String("rww"))
        return PDOMapping(RPDO);
    return PDOMapping(Allowed);
}

} // namespace

EDSImporter::EDSImporter(QObject *parent)
    : BaseDataImporter(parent)
    , parser(std::make_unique<EdsParser>())
{}

EDSImporter::~EDSImporter() = default;

void EDSImporter::doImport()
{
    beginImport();
    if (database && !fileName.isEmpty()) {
        readObjects();
        const quint8 previousLine = database->getDescriptionLine();
        database->setDescriptionLine(line);
        const IniDocument &document = parser->document();
        EdsDescriptionReader::apply(document, *database);
        auto declared = [&document](const char *key) {
            return document.value(QStringLiteral("DeviceInfo"), QLatin1String(key)).toUInt(nullptr, 0);
        };
        PdoCompletion::complete(*database, line, declared("NrOfRXPDO"), declared("NrOfTXPDO"), lowIndex,
                                highIndex);
        database->setDescriptionLine(previousLine);
        EdsCommentReader::apply(fileName, *database, line);
    }
    endImport();
}

void EDSImporter::readObjects()
{
    parser = std::make_unique<EdsParser>();
    connect(parser.get(), &EdsParser::newIndex, this, &EDSImporter::newIndex, Qt::DirectConnection);
    connect(parser.get(), &EdsParser::newSubIndex, this, &EDSImporter::newSubIndex, Qt::DirectConnection);
    pending.clear();
    parser->LoadEds(fileName);
    const auto warnings = parser->warnings();
    for (const QString &warning : warnings)
        qDebug() << Q_FUNC_INFO << fileName << warning;
    // Objects went in one by one while the parser ran; their entries go in one transaction.
    database->addSubIndices(pending);
    pending.clear();
}

bool EDSImporter::importDescriptionSections()
{
    IniDocument document;
    if (!database || fileName.isEmpty() || !document.load(fileName))
        return false;
    const quint8 previousLine = database->getDescriptionLine();
    database->setDescriptionLine(line);
    EdsDescriptionReader::apply(document, *database);
    database->setDescriptionLine(previousLine);
    return true;
}

void EDSImporter::newIndex(const CANopen::CANopenIndex &index)
{
    if (!inRange(index.index))
        return;
    INDEX_DATA_T object;
    object.name = index.name;
    object.objecttype = index.objectCode;
    object.datatype = index.dataType;
    database->addIndex(line, index.index, object);
    if (index.objectCode == 8 && index.compactSubObj > 0)
        expandCompactArray(index);
}

void EDSImporter::expandCompactArray(const CANopen::CANopenIndex &index)
{
    SUBINDEX_DATA_T count = newSubIndexRecord();
    count.name = QStringLiteral("Highest subindex supported");
    count.datatype = 5;
    count.accesstype = QStringLiteral("ro");
    count.pdomapping = PDOMapping(Forbidden);
    count.defaultvalue = QString::number(index.compactSubObj);
    database->addSubIndex(line, index.index, 0, count);

    const auto names = parser->getCompactSubObjNames(index.index);
    for (quint32 element = 1; element <= index.compactSubObj; ++element) {
        SUBINDEX_DATA_T data = newSubIndexRecord();
        data.name =
            names.value(QString::number(element), QStringLiteral("%1 %2").arg(index.name).arg(element));
        data.datatype = index.dataType;
        data.accesstype = index.accessType;
        data.defaultvalue = index.defaultValue.toString();
        data.pdomapping = PDOMapping(index.pdoMapping ? Allowed : Forbidden);
        database->addSubIndex(line, index.index, quint8(element), data);
    }
}

void EDSImporter::newSubIndex(const CANopenSubindex &subIndex)
{
    if (!inRange(subIndex.index))
        return;
    SUBINDEX_DATA_T data = newSubIndexRecord();
    data.name = subIndex.name;
    data.datatype = subIndex.dataType;
    data.accesstype = subIndex.accessType;
    data.defaultvalue = isDcf && !subIndex.parameterValue.isEmpty() ? subIndex.parameterValue
                                                                    : subIndex.defaultValue.toString();
    data.currentvalue = subIndex.parameterValue;
    data.writedefaulttoeds = subIndex.defaultInEds;
    data.denotation = subIndex.denotation;
    if (!subIndex.parameterValue.isEmpty())
        data.dcfcomponent = true;
    data.refuseread = subIndex.refuseRead;
    data.refusewrite = subIndex.refuseWrite;
    data.pdomapping = mappingOf(subIndex);
    data.limitineds = subIndex.hasLimits;
    if (subIndex.hasLimits) {
        data.lowlimit = subIndex.lowLimit;
        data.uplimit = subIndex.highLimit;
    } else {
        COHelper::getDefaultLimits(subIndex.dataType, data.lowlimit, data.uplimit);
    }

    if (subIndex.subIndex == 1) {
        INDEX_DATA_T object;
        if (database->getIndex(line, subIndex.index, object) && object.objecttype == 8) {
            object.datatype = subIndex.dataType;
            database->addIndex(line, subIndex.index, object);
        }
    }
    if (subIndex.dataType == domainType) {
        data.implementation = 2;
        data.varname = QStringLiteral("v_%1%2").arg(subIndex.index).arg(subIndex.subIndex);
    }
    pending.append(SubEntry{line, subIndex.index, subIndex.subIndex, data});
}
