#include "codbimporter.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

namespace {

// Positions of the fields of a line split at ':'.
enum Field {
    IndexField = 0,
    SubIndexField = 1,
    NameField = 2,
    CategoryField = 3,
    ObjectCodeField = 5,
    DataTypeField = 7,
    AccessField = 9,
    AccessFlagField = 10,
    LowLimitField = 15,
    HighLimitField = 17,
    DefaultField = 19,
    MappingField = 21,
    MappingFlagField = 22,
};

QString field(const QStringList &fields, Field which)
{
    return fields.value(int(which));
}

quint32 hexNumber(const QString &text)
{
    return text.toUInt(nullptr, 16);
}

// "d[ro,const,rw]" lists the access types a user may pick; a bare flag lists none.
QString allowedAccessTypes(const QString &flag)
{
    QString allowed = flag.mid(2);
    allowed.chop(1);
    return allowed;
}

PDOMapping mapping(const QStringList &fields)
{
    const QString mappable = field(fields, MappingField).trimmed();
    const bool yes = mappable == QLatin1String("y") ||
                     (mappable.isEmpty() && field(fields, MappingFlagField) == QLatin1String("d"));
    return PDOMapping(yes ? 1u : 0u);
}

// Value of the last match of the pattern in the text; 0 without a match.
quint64 lastMatch(const QRegularExpression &pattern, const QString &text)
{
    quint64 value = 0;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        value = matches.next().captured().toULongLong(nullptr, 0);
    return value;
}

void readLimits(const QStringList &fields, SUBINDEX_DATA_T &data)
{
    static const QRegularExpression decimal(QStringLiteral("[0-9]+"));
    static const QRegularExpression hexadecimal(QStringLiteral("0x[0-9A-Fa-f]+"));
    const QString low = field(fields, LowLimitField);
    if (low.isEmpty() || low == QLatin1String("d") || low == QLatin1String("n")) {
        COHelper::getDefaultLimits(data.datatype, data.lowlimit, data.uplimit);
        return;
    }
    quint64 lowValue = decimal.match(low).captured().toULongLong();
    const auto lowHex = hexadecimal.match(low);
    if (lowHex.hasMatch())
        lowValue = lowHex.captured().toULongLong(nullptr, 0);
    data.lowlimit = QString::number(lowValue);
    const QString high = field(fields, HighLimitField);
    data.uplimit = QString::number(qMax(lastMatch(decimal, high), lastMatch(hexadecimal, high)));
    // A limit relative to the node-ID is read for the highest node-ID.
    if (high.contains(QLatin1String("NODEID")))
        data.uplimit += QLatin1String("127");
}

// Domains become variables of the application; strings are kept as constants that never stay empty.
void applyDataTypeRules(quint16 index, quint8 subIndex, SUBINDEX_DATA_T &data)
{
    if (data.datatype == 15) {
        data.implementation = 2;
        data.varname = QStringLiteral("v_%1%2").arg(index).arg(subIndex);
    } else if (data.datatype == 9) {
        data.implementation = 1;
        if (data.defaultvalue.isEmpty()) {
            data.defaultvalue = QStringLiteral(" ");
            data.size = 1;
        }
    }
}

} // namespace

CODBImporter::CODBImporter(QObject *parent)
    : BaseDataImporter(parent)
{}

void CODBImporter::doImport()
{
    beginImport();
    QFile file(fileName);
    if (database && !fileName.isEmpty() && file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&file);
        QString text;
        while (in.readLineInto(&text))
            readLine(text);
    }
    qDebug() << "Import completeted";
    endImport();
}

void CODBImporter::readLine(const QString &text)
{
    if (text.isEmpty() || text.startsWith('#'))
        return;
    if (text.startsWith('$')) {
        if (objectCopies)
            copyObject(text);
        return;
    }
    const QStringList fields = text.split(':');
    if (text.indexOf(QLatin1String("::")) == 4)
        readObject(fields);
    else
        readSubIndex(fields);
}

void CODBImporter::copyObject(const QString &text)
{
    static const QRegularExpression copyLine(QStringLiteral("^\\$([0-9A-Fa-f]{4})=([0-9A-Fa-f]{4})"));
    const auto match = copyLine.match(text);
    if (match.hasMatch())
        database->copyIndex(line, quint16(hexNumber(match.captured(2))), line, quint16(hexNumber(match.captured(1))));
}

void CODBImporter::readObject(const QStringList &fields)
{
    const quint32 index = hexNumber(field(fields, IndexField));
    if (!inRange(index))
        return;
    static const QHash<QString, quint32> containers{{QStringLiteral("ARRAY"), 8}, {QStringLiteral("RECORD"), 9}};
    const QString objectCode = field(fields, ObjectCodeField);
    INDEX_DATA_T object;
    object.name = field(fields, NameField);
    if (containers.contains(objectCode)) {
        object.objecttype = containers.value(objectCode);
        database->addIndex(line, quint16(index), object);
        return;
    }
    if (objectCode != QLatin1String("VAR"))
        return;
    object.objecttype = 7;
    object.category = COHelper::convertCategory(field(fields, CategoryField));
    SUBINDEX_DATA_T sub = newSubIndexRecord();
    sub.name = object.name;
    sub.datatype = COHelper::mapDataTypeString(field(fields, DataTypeField));
    object.datatype = sub.datatype;
    sub.defaultvalue = field(fields, DefaultField);
    sub.accesstype = field(fields, AccessField);
    if (sub.accesstype.isEmpty())
        sub.accesstype = QStringLiteral("ro");
    const QString allowed = allowedAccessTypes(field(fields, AccessFlagField));
    if (!allowed.isEmpty())
        sub.allowedaccesstypes = allowed;
    sub.pdomapping = mapping(fields);
    COHelper::getDefaultLimits(sub.datatype, sub.lowlimit, sub.uplimit);
    applyDataTypeRules(quint16(index), 0, sub);
    database->addIndex(line, quint16(index), object);
    database->addSubIndex(line, quint16(index), 0, sub);
}

void CODBImporter::readSubIndex(const QStringList &fields)
{
    const auto index = quint16(hexNumber(field(fields, IndexField)));
    const auto subIndex = quint8(hexNumber(field(fields, SubIndexField)));
    SUBINDEX_DATA_T sub = newSubIndexRecord();
    sub.name = field(fields, NameField);
    sub.datatype = COHelper::mapDataTypeString(field(fields, DataTypeField));
    sub.accesstype = field(fields, AccessField);
    sub.allowedaccesstypes = allowedAccessTypes(field(fields, AccessFlagField));
    if (sub.accesstype.isEmpty())
        sub.accesstype = QStringLiteral("ro");
    sub.pdomapping = mapping(fields);
    sub.defaultvalue = field(fields, DefaultField);
    sub.writedefaulttoeds = sub.defaultvalue.isEmpty() && subIndex != 0 ? 0 : 1;
    sub.defaultineds = true;
    readLimits(fields, sub);
    INDEX_DATA_T object;
    if (database->getIndex(line, index, object)) {
        if (subIndex == 1 && object.objecttype == 8) {
            object.datatype = sub.datatype;
            database->addIndex(line, index, object);
        } else if (subIndex == 0 && (object.objecttype == 8 || object.objecttype == 9) && index >= 0x2000) {
            sub.implementation = 1;
        }
    }
    applyDataTypeRules(index, subIndex, sub);
    database->addSubIndex(line, index, subIndex, sub);
}
