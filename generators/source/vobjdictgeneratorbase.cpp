#include "vobjdictgeneratorbase.h"

#include "objdictcontext.h"
#include "objdictdialect.h"
#include "objdictmodel.h"

#include "generation/generatortext.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QHash>
#include <QTextStream>

#include <algorithm>

namespace {

// Virtual values of these types are counted together, so that they share their slots.
enum Counter
{
    Unsigned8,
    Integer8,
    Integer16,
    Integer32,
    Unsigned16,
    Unsigned32,
    Real32,
    Unsigned48,
    Integer24,
    Unsigned24,
    Unsigned40,
    Unsigned64
};

const QHash<quint16, Counter> counters = {
    {1, Unsigned8},  {5, Unsigned8},   {2, Integer8},    {3, Integer16},   {4, Integer32},
    {6, Unsigned16}, {7, Unsigned32},  {8, Real32},      {12, Unsigned48}, {25, Unsigned48},
    {16, Integer24}, {22, Unsigned24}, {24, Unsigned40}, {27, Unsigned64},
};

bool numeric(quint16 dataType)
{
    return dataType <= 8 || dataType == 22 || dataType == 24 || dataType == 25 || dataType == 27;
}

QString objectType(quint32 type)
{
    static const QHash<quint32, QString> names = {{2, QStringLiteral("CO_ODTYPE_DOM")},
                                                  {7, QStringLiteral("CO_ODTYPE_VAR")},
                                                  {8, QStringLiteral("CO_ODTYPE_ARRAY")},
                                                  {9, QStringLiteral("CO_ODTYPE_STRUCT")}};
    return names.value(type);
}

} // namespace

VobjDictGeneratorBase::VobjDictGeneratorBase(const ObjDictDialect &dialect, bool compactDescription,
                                             QObject *parent)
    : AbstractGenerator(parent)
    , dialect(dialect)
    , compactDescription(compactDescription)
{}

QString VobjDictGeneratorBase::outputFile() const
{
    return filePath(QStringLiteral("%1/gen_vobjdict.c"));
}

QString VobjDictGeneratorBase::generatorName() const
{
    return QStringLiteral("gen_vobjdict.c");
}

QList<quint8> VobjDictGeneratorBase::tableLines(const ObjDictContext &context)
{
    QList<quint8> lines;
    for (const quint8 line : context.model.linesWithObjects(2)) {
        if (context.model.indices(line, 0x1000).size() > 1)
            lines << line;
    }
    return lines;
}

bool VobjDictGeneratorBase::hasVirtualObjects()
{
    const ObjDictModel model(database);
    const ObjDictContext context(model, dialect);
    for (const quint8 line : tableLines(context)) {
        const auto &objects = model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (const auto &sub : object->subs) {
                if (sub.implementation == 3)
                    return true;
            }
        }
    }
    return false;
}

void VobjDictGeneratorBase::prepare()
{
    multiLine = database && database->getIndices(1).size() > 1;
}

void VobjDictGeneratorBase::writeContent(QTextStream &file)
{
    const ObjDictModel model(database);
    ObjDictContext context(model, dialect);
    context.compactDescription = compactDescription;
    context.multiLine = multiLine;

    QString text;
    QTextStream out(&text);
    out << "/*\n"
        << QString::fromLatin1(dialect.vobjDictTitle)
               .arg(projectName, QCoreApplication::applicationName(), toolVersion)
        << " * " << GeneratorText::currentDate() << "\n */\n"
        << "#include <stdlib.h>\n\n#include <gen_define.h>\n#include <co_canopen.h>\n\n";
    const QString headers = model.setting(QStringLiteral("applicationheader")).trimmed();
    const QStringList names = headers.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (model.settingExists(QStringLiteral("applicationheader")) && !names.isEmpty()) {
        out << "/* application header file(s) */\n";
        for (const QString &name : names)
            out << "#include \"" << name << "\"\n";
        out << "\n";
    }
    out << "/* definition of memory specifier */\n"
           "#ifndef CORE_CONST\n"
           "#define CORE_CONST const\n"
           "#endif\n\n"
           "/* definition of compiler-specific storage classes */\n"
           "#ifndef CO_STORAGE_CLASS\n"
           "#define CO_STORAGE_CLASS\n"
           "#endif\n"
           "#ifndef CORE_CONST_STORAGE_CLASS\n"
           "#define CORE_CONST_STORAGE_CLASS\n"
           "#endif\n\n"
           "\n";
    assignSlots(context);
    emit progress(25);
    writeDescription(out, context);
    emit progress(50);
    writeAssignment(out, context);
    emit progress(75);
    out.flush();
    file << dialect.spell(text);
}

void VobjDictGeneratorBase::assignSlots(const ObjDictContext &context)
{
    QHash<int, quint32> counts;
    for (const quint8 line : tableLines(context)) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                if (sub->implementation != 3 || !counters.contains(sub->datatype))
                    continue;
                quint32 &count = counts[counters.value(sub->datatype)];
                variablePositions.insert(ObjDictContext::positionKey(line, object.key(), sub.key()), count++);
            }
        }
    }
}

QString VobjDictGeneratorBase::typeColumns(const ObjDictContext &context, quint8 line, quint16 index,
                                           quint8 subIndex, quint16 dataType) const
{
    if (dialect.combinedTypeColumn) {
        QString type = QStringLiteral("CO_DTYPE_") + ObjDictContext::typeName(dataType);
        if (dataType != 15)
            type += QStringLiteral("_PTR");
        return type.leftJustified(18);
    }
    SUBINDEX_DATA_T record;
    record.implementation = 3;
    return ObjDictContext::dataTypeText(dataType) + QStringLiteral(", CO_DSPEC") +
           context.serviceSuffix(line, index, subIndex, record, true);
}

void VobjDictGeneratorBase::writeDescription(QTextStream &out, const ObjDictContext &context)
{
    out << "\n/* description of the objects */\n"
        << "CORE_CONST CO_OBJECT_DESC_T CORE_CONST_STORAGE_CLASS vod_description[CO_VOBJ_DESC_CNT] = {\n";
    const bool limitCheck = context.model.number(QStringLiteral("limit_check")) >= 1;
    quint32 row = 0;
    for (const quint8 line : tableLines(context)) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.lowerBound(0x1000); object != objects.constEnd(); ++object) {
            const quint16 index = object.key();
            int compactRow = -1;
            if (compactDescription) {
                if (object->data.objecttype == 8 || object->data.objecttype == 9) {
                    const QList<quint8> subs = context.model.subIndices(line, index, 1);
                    compactRow = subs.isEmpty() || subs.last() == 255 ? 1 : subs.last();
                } else {
                    compactRow = 0;
                }
            }
            int limit = 255;
            quint32 count = 0;
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                const quint8 subIndex = sub.key();
                if (subIndex > limit)
                    break;
                if (sub->implementation != 3 || (line > 0 && sub->sharedlines))
                    continue;
                if (count == 0)
                    assignPositions.insert(ObjDictContext::objectKey(line, index), row);
                const quint8 keyLine = sub->sharedlines ? 0 : line;
                const quint32 slot =
                    variablePositions.value(ObjDictContext::positionKey(keyLine, index, subIndex), 0);
                QString attributes = numeric(sub->datatype) ? QStringLiteral("CO_ATTR_NUM | ") : QString();
                attributes += ObjDictContext::accessAttributes(*sub) + QStringLiteral(" | CO_ATTR_DYNOD");
                if (subIndex == compactRow) {
                    limit = subIndex;
                    if (!specialVirtualObjects)
                        attributes += QStringLiteral(" | CO_ATTR_COMPACT");
                }
                out << "\t{ (UNSIGNED8)" << subIndex << "u, "
                    << typeColumns(context, line, index, subIndex, sub->datatype == 12 ? 25 : sub->datatype)
                    << ", "
                    << (specialVirtualObjects
                            ? QStringLiteral("(UNSIGNED16)0x%1u, ").arg(ObjDictContext::hex4(index))
                            : QStringLiteral("(UNSIGNED16)%1u, ").arg(slot))
                    << attributes << ", "
                    << " (UNSIGNED16)0" << (limitCheck ? "u, (UNSIGNED16)0u, (UNSIGNED16)0u}," : "u},")
                    << "/* ";
                if (multiLine)
                    out << line << "-";
                out << "0x" << ObjDictContext::hex4(index) << ":" << subIndex << "*/ \n";
                ++row;
                ++count;
            }
            rowCounts.insert(ObjDictContext::objectKey(line, index), count);
        }
    }
    out << "};\n";
}

void VobjDictGeneratorBase::writeAssignment(QTextStream &out, const ObjDictContext &context) const
{
    out << "\n/* object dictionary assignment */\n"
        << "CORE_CONST CO_OD_ASSIGN_T CORE_CONST_STORAGE_CLASS vod_assign[CO_VOD_ASSIGN_CNT] = {\n";
    for (const quint8 line : tableLines(context)) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.lowerBound(0x1000); object != objects.constEnd(); ++object) {
            const bool virtualObject =
                std::any_of(object->subs.constBegin(), object->subs.constEnd(),
                            [](const SUBINDEX_DATA_T &sub) { return sub.implementation == 3; });
            if (!virtualObject)
                continue;
            const auto first = object->subs.constFind(0);
            const bool shared = first != object->subs.constEnd() && first->sharedlines;
            const quint16 index = object.key();
            out << QStringLiteral("\t{ 0x%1u, %2u, %3u, %4, %5u },\n")
                       .arg(index, 4, 16, QLatin1Char('0'))
                       .arg(rowCounts.value(ObjDictContext::objectKey(line, index)))
                       .arg(object->subs.lastKey())
                       .arg(objectType(object->data.objecttype))
                       .arg(assignPositions.value(ObjDictContext::objectKey(shared ? 0 : line, index)));
        }
    }
    out << "};\n";
}
