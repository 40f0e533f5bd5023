#include "dbcdump.h"

#include "generators/documents/dbc/candbdatabase.h"

#include <QStringList>

#include <charconv>

namespace {

QString text(const std::string &value)
{
    return QString::fromUtf8(value.data(), qsizetype(value.size()));
}

QString nodeNames(const std::vector<CANdbNode *> &nodes)
{
    QStringList names;
    for (const CANdbNode *node : nodes)
        names << text(node->name);
    return names.join(',');
}

QString valueNames(const std::vector<CANdbValueName> &names)
{
    QStringList entries;
    for (const auto &entry : names)
        entries << QStringLiteral("%1=%2").arg(entry.value).arg(text(entry.name));
    return entries.join(',');
}

QString attributeValue(const CANdbAttribute &attribute)
{
    switch (attribute.type) {
    case CANdbAttributeDefinition::Float:
        return dbcNumber(attribute.floatValue);
    case CANdbAttributeDefinition::String:
        return QLatin1Char('"') + text(attribute.stringValue) + QLatin1Char('"');
    default:
        return QString::number(attribute.intValue);
    }
}

void dumpAttributes(QStringList &lines, const QString &owner, const CANdbAttributeList &attributes)
{
    for (const auto &attribute : attributes)
        lines << QStringLiteral("  attribute %1 %2 = %3")
                     .arg(owner, text(attribute->definition->name), attributeValue(*attribute));
}

QString definitionText(const CANdbAttributeDefinition &definition)
{
    QString values;
    switch (definition.type) {
    case CANdbAttributeDefinition::Int:
    case CANdbAttributeDefinition::Hex:
        values = QStringLiteral("%1..%2 default %3")
                     .arg(definition.intMin)
                     .arg(definition.intMax)
                     .arg(definition.intDefault);
        break;
    case CANdbAttributeDefinition::Float:
        values = QStringLiteral("%1..%2 default %3")
                     .arg(dbcNumber(definition.floatMin), dbcNumber(definition.floatMax),
                          dbcNumber(definition.floatDefault));
        break;
    case CANdbAttributeDefinition::Enum: {
        QStringList names;
        for (const auto &name : definition.enumValues)
            names << text(name);
        values = names.join(',') + QStringLiteral(" default %1").arg(definition.enumDefault);
        break;
    }
    case CANdbAttributeDefinition::String:
        values = QStringLiteral("default \"%1\"").arg(text(definition.stringDefault));
        break;
    default:
        break;
    }
    return QStringLiteral("definition %1 owner %2 type %3 %4")
        .arg(text(definition.name))
        .arg(definition.owner)
        .arg(definition.type)
        .arg(values);
}

} // namespace

QString dbcNumber(double value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 11);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

QString dumpDatabase(const CANdbDatabase &database)
{
    QStringList lines;
    if (!database.comment.empty())
        lines << QStringLiteral("comment \"%1\"").arg(text(database.comment));
    for (const auto &node : database.nodes) {
        lines << QStringLiteral("node %1 \"%2\"").arg(text(node->name), text(node->comment));
        dumpAttributes(lines, QStringLiteral("node"), node->attributes);
    }
    for (const auto &message : database.messages) {
        lines << QStringLiteral("message %1 %2%3 dlc %4 from %5 \"%6\"")
                     .arg(message->id)
                     .arg(message->extended ? QStringLiteral("ext ") : QString())
                     .arg(text(message->name))
                     .arg(message->dlc)
                     .arg(message->sender ? text(message->sender->name) : QStringLiteral("-"))
                     .arg(text(message->comment));
        dumpAttributes(lines, QStringLiteral("message"), message->attributes);
        for (const auto &signal : message->signalList) {
            QString mux;
            if (signal->isMultiplexer)
                mux = QStringLiteral(" M");
            else if (signal->muxValue != -1)
                mux = QStringLiteral(" m%1").arg(signal->muxValue);
            lines << QStringLiteral(
                         "  signal %1%2 %3|%4 %5 type %6 (%7,%8) [%9|%10] \"%11\" to %12 \"%13\" values %14")
                         .arg(text(signal->name), mux)
                         .arg(signal->startBit)
                         .arg(signal->length)
                         .arg(signal->motorola ? QStringLiteral("motorola") : QStringLiteral("intel"))
                         .arg(signal->valueType)
                         .arg(dbcNumber(signal->factor), dbcNumber(signal->offset),
                              dbcNumber(signal->minimum), dbcNumber(signal->maximum), text(signal->unit),
                              nodeNames(signal->receivers), text(signal->comment),
                              valueNames(signal->valueNames));
            dumpAttributes(lines, QStringLiteral("signal"), signal->attributes);
        }
    }
    for (const auto &variable : database.variables) {
        lines << QStringLiteral("variable %1 type %2 access %3 [%4|%5] \"%6\" start %7 id %8 %9 nodes %10 "
                                "data %11 \"%12\" "
                                "values %13")
                     .arg(text(variable->name))
                     .arg(variable->type)
                     .arg(variable->access)
                     .arg(dbcNumber(variable->minimum), dbcNumber(variable->maximum), text(variable->unit),
                          dbcNumber(variable->startValue))
                     .arg(variable->numericId)
                     .arg(text(variable->dummyNode), nodeNames(variable->nodes),
                          variable->hasData ? dbcNumber(variable->dataValue) : QStringLiteral("-"),
                          text(variable->comment), valueNames(variable->valueNames));
        dumpAttributes(lines, QStringLiteral("variable"), variable->attributes);
    }
    for (const auto &definition : database.definitions)
        lines << definitionText(*definition);
    dumpAttributes(lines, QStringLiteral("network"), database.attributes);
    return lines.join('\n');
}
