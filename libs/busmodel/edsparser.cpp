#include "edsparser.h"

#include "busmodel/cohelper.h"

#include <QRegularExpression>

namespace {

const char *const objectLists[] = {"MandatoryObjects", "OptionalObjects", "ManufacturerObjects"};
const char *const accessTypes[] = {"ro", "wo", "rw", "rwr", "rww", "const"};

constexpr quint32 domainObject = 2;
constexpr quint16 domainType = 0x000F;
// Sub-index 0 holds the count, so an array has at most 254 elements.
constexpr quint64 largestCompactArray = 254;

// Object codes whose entries stand in sections of their own.
bool isComposite(quint32 objectCode)
{
    return objectCode == 6 || objectCode == 8 || objectCode == 9;
}

// A number in the bases of CiA 306. A leading zero without octal digits behind it is taken as decimal,
// as writers of "08" mean it.
std::optional<quint64> parseNumber(const QString &text)
{
    bool ok = false;
    const quint64 value = text.toULongLong(&ok, 0);
    if (ok)
        return value;
    const quint64 decimal = text.toULongLong(&ok, 10);
    return ok ? std::optional(decimal) : std::nullopt;
}

std::optional<qint64> parseSignedNumber(const QString &text)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok, 0);
    if (ok)
        return value;
    if (const auto number = parseNumber(text))
        return qint64(*number);
    return std::nullopt;
}

enum class ValueKind
{
    Text,
    Integer,
    Real
};

// Strings, domains, times and unknown types take any text.
ValueKind valueKind(quint16 dataType)
{
    if (dataType == 8 || dataType == 17)
        return ValueKind::Real;
    if (dataType == 12 || dataType == 13 || COHelper::getDataLengthBits(dataType) == 0)
        return ValueKind::Text;
    return ValueKind::Integer;
}

QString hex4(quint16 index)
{
    return QStringLiteral("%1").arg(index, 4, 16, QChar('0'));
}

} // namespace

EdsParser::EdsParser(QObject *parent)
    : QObject(parent)
{}

bool EdsParser::LoadEds(const QString &fileName)
{
    ini = IniDocument();
    if (!ini.load(fileName))
        return false;
    return parseDocument();
}

bool EdsParser::loadEdsData(const QByteArray &data)
{
    ini = IniDocument();
    ini.parse(data);
    return parseDocument();
}

bool EdsParser::parseDocument()
{
    const auto objects = collectSections();
    checkObjectLists(objects);
    bool reported = false;
    for (auto it = objects.constBegin(); it != objects.constEnd(); ++it) {
        if (!it->object) {
            ini.addWarning(QStringLiteral("sub-index sections of 0x%1 without an object section, skipped")
                               .arg(hex4(it.key())));
            continue;
        }
        reportObject(it.key(), it.value());
        reported = true;
    }
    return reported;
}

QMap<quint16, EdsParser::ObjectSections> EdsParser::collectSections()
{
    static const QRegularExpression objectName(QStringLiteral("^[0-9a-f]{4}$"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression entryName(QStringLiteral("^([0-9a-f]{4})sub(.*)$"),
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression subIndexDigits(QStringLiteral("^[0-9a-f]{1,2}$"),
                                                   QRegularExpression::CaseInsensitiveOption);
    QMap<quint16, ObjectSections> objects;
    for (const auto &section : ini.sections()) {
        if (objectName.match(section.name).hasMatch()) {
            objects[quint16(section.name.toUInt(nullptr, 16))].object = &section;
            continue;
        }
        const auto entry = entryName.match(section.name);
        if (!entry.hasMatch())
            continue;
        const QString subIndex = entry.captured(2);
        if (!subIndexDigits.match(subIndex).hasMatch()) {
            ini.addWarning(QStringLiteral("line %1: section [%2] names no sub-index from 0 to ff, skipped")
                               .arg(section.line)
                               .arg(section.name));
            continue;
        }
        objects[quint16(entry.captured(1).toUInt(nullptr, 16))].entries.insert(
            quint8(subIndex.toUInt(nullptr, 16)), &section);
    }
    return objects;
}

void EdsParser::checkObjectLists(const QMap<quint16, ObjectSections> &objects)
{
    for (const char *listName : objectLists) {
        const IniDocument::Section *list = ini.section(QLatin1String(listName));
        if (!list)
            continue;
        qsizetype listed = 0;
        for (const auto &entry : list->entries) {
            if (entry.key.compare(QLatin1String("SupportedObjects"), Qt::CaseInsensitive) == 0)
                continue;
            ++listed;
            const auto index = parseNumber(entry.value);
            const auto found =
                index && *index <= 0xFFFF ? objects.constFind(quint16(*index)) : objects.constEnd();
            if (found == objects.constEnd() || !found->object)
                ini.addWarning(QStringLiteral("line %1: object %2 of [%3] has no section, skipped")
                                   .arg(entry.line)
                                   .arg(entry.value, list->name));
        }
        const QString supported = ini.value(list->name, QStringLiteral("SupportedObjects"));
        const auto count = parseNumber(supported);
        if (!count || *count != quint64(listed))
            ini.addWarning(QStringLiteral("[%1] gives SupportedObjects=%2 but lists %3 objects")
                               .arg(list->name, supported)
                               .arg(listed));
    }
}

void EdsParser::reportObject(quint16 index, const ObjectSections &sections)
{
    const IniDocument::Section &section = *sections.object;
    CANopen::CANopenIndex object;
    object.index = index;
    object.name = ini.value(section.name, QStringLiteral("ParameterName"));
    object.denotation = ini.value(section.name, QStringLiteral("Denotation"));
    object.objectCode = quint32(readNumber(section, QStringLiteral("ObjectType"), 7));
    if (isComposite(object.objectCode)) {
        reportComposite(object, sections);
        return;
    }
    const auto entry = readEntry(section, index, 0, object.objectCode);
    if (!entry)
        return;
    if (!sections.entries.isEmpty())
        ini.addWarning(
            QStringLiteral("sub-index sections of the single object 0x%1 are skipped").arg(hex4(index)));
    object.dataType = entry->dataType;
    object.accessType = entry->accessType;
    object.defaultValue = entry->defaultValue;
    object.pdoMapping = entry->pdoMapping;
    emit newIndex(object);
    emit newSubIndex(*entry);
}

void EdsParser::reportComposite(CANopen::CANopenIndex object, const ObjectSections &sections)
{
    const IniDocument::Section &section = *sections.object;
    if (!section.find(QStringLiteral("ParameterName")))
        ini.addWarning(
            QStringLiteral("line %1: [%2] has no ParameterName").arg(section.line).arg(section.name));
    object.dataType = quint16(readNumber(section, QStringLiteral("DataType"), 0));
    object.subNumber = quint32(readNumber(section, QStringLiteral("SubNumber"), 0));
    const quint64 compact = readNumber(section, QStringLiteral("CompactSubObj"), 0);
    if (compact > 0 && object.objectCode != 8) {
        ini.addWarning(QStringLiteral("line %1: CompactSubObj of [%2], which is no ARRAY, is skipped")
                           .arg(section.line)
                           .arg(section.name));
    } else if (compact > 0) {
        if (compact > largestCompactArray)
            ini.addWarning(QStringLiteral("line %1: CompactSubObj=%2 of [%3] is cut to %4")
                               .arg(section.line)
                               .arg(compact)
                               .arg(section.name)
                               .arg(largestCompactArray));
        object.compactSubObj = quint32(qMin(compact, largestCompactArray));
        object.accessType = readAccessType(section);
        if (const auto *value = section.find(QStringLiteral("DefaultValue"))) {
            object.defaultValue = value->value;
            checkValue(section, value, object.dataType);
        }
        object.pdoMapping = readNumber(section, QStringLiteral("PDOMapping"), 0) != 0;
    } else if (section.find(QStringLiteral("SubNumber")) &&
               object.subNumber != quint32(sections.entries.size())) {
        ini.addWarning(QStringLiteral("line %1: [%2] gives SubNumber=%3 but has %4 sub-index sections")
                           .arg(section.line)
                           .arg(section.name)
                           .arg(object.subNumber)
                           .arg(sections.entries.size()));
    }
    emit newIndex(object);
    for (auto it = sections.entries.constBegin(); it != sections.entries.constEnd(); ++it) {
        if (const auto entry = readEntry(*it.value(), object.index, it.key(), 7))
            emit newSubIndex(*entry);
    }
}

std::optional<CANopenSubindex> EdsParser::readEntry(const IniDocument::Section &section, quint16 index,
                                                    quint8 subIndex, quint32 objectCode)
{
    CANopenSubindex entry;
    entry.index = index;
    entry.subIndex = subIndex;
    const auto *type = section.find(QStringLiteral("DataType"));
    const auto dataType = type ? parseNumber(type->value) : std::nullopt;
    if (type && (!dataType || *dataType > 0xFFFF)) {
        ini.addWarning(QStringLiteral("line %1: DataType \"%2\" of [%3] is no type, the entry is skipped")
                           .arg(type->line)
                           .arg(type->value, section.name));
        return std::nullopt;
    }
    if (!type && objectCode != domainObject) {
        ini.addWarning(QStringLiteral("line %1: [%2] has no DataType, the entry is skipped")
                           .arg(section.line)
                           .arg(section.name));
        return std::nullopt;
    }
    entry.dataType = type ? quint16(*dataType) : domainType;
    if (const auto *name = section.find(QStringLiteral("ParameterName")))
        entry.name = name->value;
    else
        ini.addWarning(
            QStringLiteral("line %1: [%2] has no ParameterName").arg(section.line).arg(section.name));
    entry.accessType = readAccessType(section);
    if (const auto *value = section.find(QStringLiteral("DefaultValue"))) {
        entry.defaultValue = value->value;
        entry.defaultInEds = 1;
    }
    auto text = [&section](const char *key) {
        const auto *found = section.find(QLatin1String(key));
        return found ? found->value : QString();
    };
    entry.parameterValue = text("ParameterValue");
    entry.denotation = text("Denotation");
    entry.lowLimit = text("LowLimit");
    entry.highLimit = text("HighLimit");
    entry.hasLimits = !entry.lowLimit.isEmpty() || !entry.highLimit.isEmpty();
    for (const char *key : {"DefaultValue", "ParameterValue", "LowLimit", "HighLimit"})
        checkValue(section, section.find(QLatin1String(key)), entry.dataType);
    const quint64 flags = readNumber(section, QStringLiteral("ObjFlags"), 0);
    entry.refuseWrite = flags & 1;
    entry.refuseRead = flags & 2;
    entry.pdoMapping = readNumber(section, QStringLiteral("PDOMapping"), 0) != 0;
    return entry;
}

quint64 EdsParser::readNumber(const IniDocument::Section &section, const QString &key, quint64 fallback)
{
    const auto *entry = section.find(key);
    if (!entry)
        return fallback;
    if (const auto number = parseNumber(entry->value))
        return *number;
    ini.addWarning(QStringLiteral("line %1: %2 \"%3\" of [%4] is no number, %5 stands")
                       .arg(entry->line)
                       .arg(entry->key, entry->value, section.name)
                       .arg(fallback));
    return fallback;
}

QString EdsParser::readAccessType(const IniDocument::Section &section)
{
    const auto *entry = section.find(QStringLiteral("AccessType"));
    const QString access = entry ? entry->value.toLower() : QString();
    for (const char *known : accessTypes) {
        if (access == QLatin1String(known))
            return access;
    }
    ini.addWarning(entry ? QStringLiteral("line %1: AccessType \"%2\" of [%3] is unknown, ro stands")
                               .arg(entry->line)
                               .arg(entry->value, section.name)
                         : QStringLiteral("line %1: [%2] has no AccessType, ro stands")
                               .arg(section.line)
                               .arg(section.name));
    return QStringLiteral("ro");
}

void EdsParser::checkValue(const IniDocument::Section &section, const IniDocument::Entry *entry,
                           quint16 dataType)
{
    if (!entry || entry->value.isEmpty())
        return;
    const QString &text = entry->value;
    bool ok = true;
    switch (valueKind(dataType)) {
    case ValueKind::Text:
        return;
    case ValueKind::Real:
        text.toDouble(&ok);
        break;
    case ValueKind::Integer:
        ok = evaluateValue(text, 1).has_value();
        break;
    }
    if (!ok)
        ini.addWarning(QStringLiteral("line %1: %2 \"%3\" of [%4] is no value of type %5, kept as text")
                           .arg(entry->line)
                           .arg(entry->key, text, section.name, COHelper::index2DataTypeString(dataType)));
}

QMap<QString, QString> EdsParser::getCompactSubObjNames(ushort index) const
{
    QMap<QString, QString> names;
    const IniDocument::Section *section = ini.section(hex4(index) + QLatin1String("Name"));
    if (!section)
        return names;
    for (const auto &entry : section->entries) {
        const auto subIndex = parseNumber(entry.key);
        if (subIndex && *subIndex <= 0xFF)
            names.insert(QString::number(*subIndex), entry.value);
    }
    return names;
}

QList<quint16> EdsParser::getObjectLinks(quint16 index) const
{
    QList<quint16> links;
    const IniDocument::Section *section = ini.section(hex4(index) + QLatin1String("ObjectLinks"));
    if (!section)
        return links;
    for (const auto &entry : section->entries) {
        if (entry.key.compare(QLatin1String("ObjectLinks"), Qt::CaseInsensitive) == 0)
            continue;
        const auto linked = parseNumber(entry.value);
        if (linked && *linked <= 0xFFFF)
            links << quint16(*linked);
    }
    return links;
}

std::optional<qint64> EdsParser::evaluateValue(const QString &text, quint8 nodeId)
{
    QString expression;
    expression.reserve(text.size());
    for (const QChar c : text) {
        if (!c.isSpace())
            expression += c;
    }
    if (expression.isEmpty())
        return std::nullopt;
    // Unsigned arithmetic, so that the sum of large 64-bit values wraps instead of overflowing.
    quint64 total = 0;
    qsizetype pos = 0;
    while (pos < expression.size()) {
        bool negative = false;
        const QChar sign = expression.at(pos);
        if (sign == '+' || sign == '-') {
            negative = sign == '-';
            ++pos;
        } else if (pos > 0) {
            return std::nullopt;
        }
        qsizetype end = pos;
        while (end < expression.size() && expression.at(end) != '+' && expression.at(end) != '-')
            ++end;
        const QString term = expression.mid(pos, end - pos);
        std::optional<qint64> value;
        if (term.compare(QLatin1String("$NODEID"), Qt::CaseInsensitive) == 0)
            value = nodeId;
        else if (!term.isEmpty())
            value = parseSignedNumber(term);
        if (!value)
            return std::nullopt;
        total = negative ? total - quint64(*value) : total + quint64(*value);
        pos = end;
    }
    return qint64(total);
}
