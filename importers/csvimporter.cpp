#include "csvimporter.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include <optional>

namespace {

// The columns that the importer reads; a row has to reach each of them that the head names.
const char *const knownColumns[] = {"index",     "sub",      "datatype",       "access",      "varname",
                                    "nvstorage", "edsname",  "value",          "description", "objectcode",
                                    "size",      "mapable",  "implementation", "hasdefault",  "defaultineds",
                                    "line",      "lowlimit", "uplimit",        "haslimit"};

constexpr quint16 domainType = 15;

std::optional<uint> number(const QString &text, uint largest, int base = 0)
{
    bool ok = false;
    const uint value = text.trimmed().toUInt(&ok, base);
    return ok && value <= largest ? std::optional(value) : std::nullopt;
}

// A flag cell: a number that is not 0, or, as the older tables write it, "yes" or "true".
bool flag(const QString &text)
{
    const QString cell = text.trimmed().toLower();
    if (const auto value = number(cell, ~0u))
        return *value != 0;
    return cell == QLatin1String("yes") || cell == QLatin1String("true");
}

bool inMappingRange(quint16 index)
{
    return (index >= 0x1600 && index <= 0x17FF) || (index >= 0x1A00 && index <= 0x1BFF);
}

// The cells of one object row, found by the names of the head.
class Row
{
public:
    Row(const QStringList &columns, const QStringList &fields)
        : columns(columns)
        , fields(fields)
    {}

    qsizetype position(const char *column) const { return columns.indexOf(QLatin1String(column)); }
    bool has(const char *column) const { return position(column) >= 0; }
    QString text(const char *column, const QString &fallback = QString()) const
    {
        const qsizetype at = position(column);
        return at < 0 ? fallback : fields.at(at);
    }
    bool reachesAllColumns() const
    {
        for (const char *column : knownColumns) {
            if (position(column) >= fields.size())
                return false;
        }
        return true;
    }

private:
    const QStringList &columns;
    const QStringList &fields;
};

QString entryName(const QString &edsName, const QString &varName, quint16 index)
{
    if (!edsName.isEmpty())
        return edsName;
    if (!varName.isEmpty())
        return varName;
    return QStringLiteral("Object_") + QStringLiteral("%1").arg(index, 4, 16, QChar('0')).toUpper();
}

// The cells of an object row, with the defaults of the columns the head lacks; nullopt for a row whose
// index or sub-index is no number.
std::optional<CsvImporter::RowValues> readValues(const Row &row, quint8 importLine)
{
    const auto index = number(row.text("index"), 0xFFFF);
    if (!index)
        return std::nullopt;
    CsvImporter::RowValues values;
    values.index = quint16(*index);
    const QString subText = row.text("sub").trimmed();
    if (!subText.isEmpty()) {
        const auto subIndex = number(subText, 0xFF);
        if (!subIndex)
            return std::nullopt;
        values.subIndex = quint8(*subIndex);
    }
    values.line =
        row.has("line") ? quint8(number(row.text("line"), 0xFF, 10).value_or(importLine)) : importLine;
    values.typeText = row.text("datatype").trimmed().toLower();
    values.dataType = COHelper::mapDataTypeString(values.typeText);
    values.access =
        row.has("access") ? COHelper::normalizeAccessType(row.text("access")) : QStringLiteral("ro");
    values.varName = row.text("varname").trimmed();
    values.nvStorage = row.text("nvstorage").trimmed().toLower() == QLatin1String("yes");
    values.value = row.text("value");
    values.description = row.text("description").replace(Helper::csvDescLinebreak, QStringLiteral("\n"));
    values.objectCode = row.text("objectcode", QStringLiteral("VARIABLE")).trimmed();
    values.implementation = row.text("implementation", QStringLiteral("none")).trimmed();
    values.size = number(row.text("size"), ~0u).value_or(0);
    // These two count only in a column behind the first.
    if (row.position("mapable") > 0)
        values.mapping = PDOMapping::fromCSVString(row.text("mapable"));
    if (row.position("hasdefault") > 0)
        values.hasDefault = flag(row.text("hasdefault"));
    if (row.has("defaultineds"))
        values.defaultInEds =
            quint8(number(row.text("defaultineds"), 2).value_or(flag(row.text("defaultineds"))));
    values.lowLimit = row.text("lowlimit").trimmed();
    values.upLimit = row.text("uplimit").trimmed();
    values.hasLimit = row.has("haslimit") ? row.text("haslimit").trimmed().toLower() == QLatin1String("yes")
                                          : !values.lowLimit.isEmpty() || !values.upLimit.isEmpty();
    values.name = entryName(row.text("edsname"), values.varName, values.index);
    return values;
}

void applyLimits(SUBINDEX_DATA_T &data, const CsvImporter::RowValues &row)
{
    COHelper::getDefaultLimits(data.datatype, data.lowlimit, data.uplimit);
    if (!row.lowLimit.isEmpty())
        data.lowlimit = row.lowLimit;
    if (!row.upLimit.isEmpty())
        data.uplimit = row.upLimit;
    data.limitineds = row.hasLimit;
    if (row.size != 0)
        data.size = row.size;
}

void applyImplementationRules(SUBINDEX_DATA_T &data, const CsvImporter::RowValues &row)
{
    if (row.typeText == QLatin1String("u8s") || data.accesstype == QLatin1String("const"))
        data.implementation = 1;
    if (row.implementation.toLower() != QLatin1String("virtualobject"))
        return;
    if (data.datatype == domainType) {
        data.implementation = 2;
        data.varname = QStringLiteral("v_%1%2").arg(row.index).arg(row.subIndex);
    } else {
        data.implementation = 3;
    }
}

SUBINDEX_DATA_T namedRecord(const CsvImporter::RowValues &row)
{
    SUBINDEX_DATA_T data = BaseDataImporter::newSubIndexRecord();
    data.name = row.name;
    if (!row.varName.isEmpty()) {
        data.varname = row.varName;
        data.implementation = 2;
    }
    return data;
}

} // namespace

CsvImporter::CsvImporter(QObject *parent)
    : BaseDataImporter(parent)
{}

bool CsvImporter::getCopyList(QList<CsvObjectRef> &list) const
{
    list = copyList;
    qDebug() << "mcl" << list.size();
    return !list.isEmpty();
}

bool CsvImporter::getDeleteList(QList<CsvObjectRef> &list) const
{
    list = deleteList;
    qDebug() << "mdl" << list.size();
    return !list.isEmpty();
}

void CsvImporter::doImport()
{
    beginImport();
    copyList.clear();
    deleteList.clear();
    QFile file(fileName);
    if (database && !fileName.isEmpty() && file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&file);
        bool headRead = false;
        QString text;
        while (in.readLineInto(&text)) {
            if (text.trimmed().isEmpty() || text.startsWith('#'))
                continue;
            if (!headRead) {
                readHead(text);
                headRead = true;
            } else if (text.startsWith('d')) {
                readDeleteCommand(split(text));
            } else if (text.startsWith('c')) {
                readCopyCommand(split(text));
            } else {
                readObjectRow(split(text));
            }
        }
    }
    endImport();
}

void CsvImporter::readHead(const QString &text)
{
    if (text.contains(','))
        separator = ',';
    else if (text.contains(';'))
        separator = ';';
    columns.clear();
    const auto names = split(text.toLower());
    for (const QString &name : names)
        columns << name.trimmed();
}

QStringList CsvImporter::split(const QString &text) const
{
    // A cell that starts with a double quote runs to the closing one, doubled quotes standing for one.
    QStringList fields;
    QString field;
    bool quoted = false;
    bool cellStart = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c != '"')
                field += c;
            else if (i + 1 < text.size() && text.at(i + 1) == '"')
                field += text.at(++i);
            else
                quoted = false;
        } else if (c == separator) {
            fields << field;
            field.clear();
            cellStart = true;
            continue;
        } else if (c == '"' && cellStart) {
            quoted = true;
        } else {
            field += c;
        }
        cellStart = false;
    }
    fields << field;
    return fields;
}

void CsvImporter::readDeleteCommand(const QStringList &fields)
{
    qDebug() << Q_FUNC_INFO << fields.size();
    const auto index = number(fields.value(1), 0xFFFF);
    if (!index || *index == 0)
        return;
    if (fields.size() == 2) {
        deleteList.append(CsvObjectRef{quint16(*index), 0, true});
    } else if (fields.size() == 3) {
        if (const auto subIndex = number(fields.at(2), 0xFF))
            deleteList.append(CsvObjectRef{quint16(*index), quint8(*subIndex), false});
    }
}

void CsvImporter::readCopyCommand(const QStringList &fields)
{
    qDebug() << Q_FUNC_INFO << fields.size();
    const auto index = number(fields.value(1), 0xFFFF);
    if (!index || *index == 0)
        return;
    if (fields.size() == 3) {
        const auto source = number(fields.at(2), 0xFFFF);
        if (source && *source != 0)
            copyList << CsvObjectRef{quint16(*index), 0, true} << CsvObjectRef{quint16(*source), 0, true};
    } else if (fields.size() == 4) {
        const auto target = number(fields.at(2), 0xFF);
        const auto source = number(fields.at(3), 0xFF);
        if (target && source && *target != *source)
            copyList << CsvObjectRef{quint16(*index), quint8(*target), false}
                     << CsvObjectRef{quint16(*index), quint8(*source), false};
    }
}

void CsvImporter::readObjectRow(const QStringList &fields)
{
    const Row row(columns, fields);
    if (fields.size() < 5 || !row.has("index") || !row.reachesAllColumns())
        return;
    const auto values = readValues(row, line);
    if (!values || !inRange(values->index))
        return;
    if (values->objectCode.toUpper() == QLatin1String("ARRAY"))
        arrayType = values->dataType;
    if (values->subIndex == 0)
        addFirstEntry(*values);
    else
        addEntry(*values);
}

void CsvImporter::addFirstEntry(const RowValues &values)
{
    if (!database->indexExists(values.line, values.index)) {
        INDEX_DATA_T object;
        object.name = values.name;
        object.datatype = values.dataType;
        object.objecttype = COHelper::string2objectCode(values.objectCode);
        object.description = values.description;
        database->addIndex(values.line, values.index, object);
    }
    SUBINDEX_DATA_T data = namedRecord(values);
    INDEX_DATA_T object;
    database->getIndex(values.line, values.index, object);
    if (object.objecttype == 8 || object.objecttype == 9) {
        // Sub-index 0 of an ARRAY or RECORD is its counter.
        data.datatype = 5;
        data.defaultineds = true;
        data.writedefaulttoeds = true;
        if (inMappingRange(values.index) && values.access == QLatin1String("rw"))
            data.implementation = 0;
    } else {
        data.defaultineds = values.hasDefault;
        data.datatype = values.dataType != 0 ? values.dataType : arrayType;
    }
    data.accesstype = values.access;
    data.pdomapping = values.mapping;
    data.defaultvalue = values.value;
    applyLimits(data, values);
    applyImplementationRules(data, values);
    data.nvstorage = values.nvStorage;
    data.writedefaulttoeds = values.defaultInEds;
    database->addSubIndex(values.line, values.index, 0, data);
}

void CsvImporter::addEntry(const RowValues &values)
{
    if (!database->subIndexExists(values.line, values.index, 0)) {
        SUBINDEX_DATA_T count = newSubIndexRecord();
        count.name = QStringLiteral("Highest Subindex supported");
        count.datatype = 5;
        count.accesstype = QStringLiteral("ro");
        count.writedefaulttoeds = true;
        if (values.implementation.toLower() == QLatin1String("virtualobject"))
            count.implementation = 3;
        database->addSubIndex(values.line, values.index, 0, count);
    }
    SUBINDEX_DATA_T data = namedRecord(values);
    data.description = values.description;
    data.datatype = values.dataType != 0 ? values.dataType : arrayType;
    data.accesstype = values.access;
    data.pdomapping = values.mapping;
    data.defaultvalue = values.value;
    data.defaultineds = values.hasDefault;
    applyLimits(data, values);
    // Only a writable entry takes the table's choice; the others keep that of a new record.
    if (values.access.contains(QLatin1String("rw"), Qt::CaseInsensitive))
        data.writedefaulttoeds = values.defaultInEds;
    applyImplementationRules(data, values);
    data.nvstorage = values.nvStorage;
    database->addSubIndex(values.line, values.index, values.subIndex, data);
}
