#include "modelcheckobjectrules.h"

#include "generation/modelcheckcanopencontext.h"
#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QHash>
#include <QPair>
#include <QStringList>

namespace {

constexpr quint32 Variable = 7;
constexpr quint32 Array = 8;
constexpr quint32 Record = 9;

constexpr quint8 ManagedVariable = 0;
constexpr quint8 ManagedConst = 1;
constexpr quint8 ApplicationVariable = 2;
constexpr quint8 VirtualObject = 3;

const QStringList validAccessTypes{QStringLiteral("ro"),  QStringLiteral("const"), QStringLiteral("rw"),
                                   QStringLiteral("rwr"), QStringLiteral("rww"),   QStringLiteral("wo")};

struct StringType
{
    quint16 dataType;
    // Whether the rules of the sub-index end with this one, whatever the implementation.
    bool lastRule;
    const char *managedVariableMessage;
};

// String types whose length the stack cannot manage by itself.
const StringType stringTypes[] = {
    {10, true,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type 'Managed "
                       "Variable' is not possible for octet strings.")},
    {9, true,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type 'Managed "
                       "Variable' is not possible for visible strings. Use 'Managed Const' or "
                       "'Variable' instead.")},
    {124, false,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type 'Managed "
                       "Variable' is not possible for UTF8 strings. Use 'Managed Const' or 'Variable' "
                       "instead.")},
};

// Types without a numeric range: visible string, octet string, domain.
const quint16 typesWithoutRange[] = {9, 10, 15};

// An upper limit of this value stands for "no limit".
constexpr qint64 noUpperLimit = 0x7fffff;

bool isMappingObject(quint16 index)
{
    return (index >= 0x1600 && index <= 0x17FF) || (index >= 0x1A00 && index <= 0x1BFF);
}

} // namespace

ModelCheckObjectRules::ModelCheckObjectRules(ModelCheckCANopenContext &checkContext)
    : context(checkContext)
{}

void ModelCheckObjectRules::checkObjects()
{
    const auto objects = context.indices(0x1000, 0xFFFF);
    for (const quint16 index : objects)
        checkObject(index);
}

bool ModelCheckObjectRules::sub0Applies(quint16 index) const
{
    if (index == 0x1003)
        return false;
    if (!isMappingObject(index))
        return true;
    // Dynamic mapping: sub-index 0 is written at run time.
    if (context.subIndex(index, 0).accesstype == QLatin1String("rw"))
        return false;
    // Static mapping with 253 and above marks a table whose entries the stack does not count.
    return context.value(index, 0) < 253;
}

void ModelCheckObjectRules::checkObject(quint16 index)
{
    INDEX_DATA_T object;
    context.database->getIndex(context.line, index, object);
    const QList<quint8> subIndices = context.subIndices(index);
    const QString hexIndex = ModelCheckOutput::hexIndex(index);

    if (object.objecttype != Variable && subIndices.isEmpty())
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1: This array does not contain any sub-indices")
                .arg(hexIndex));
    if (object.objecttype != Variable && !subIndices.isEmpty())
        checkSubIndexZero(index, subIndices);
    if (object.name.trimmed().isEmpty())
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1: The object does not have a name. (Required for EDS)")
                .arg(hexIndex));
    if (object.objecttype == Variable && subIndices.size() >= 2)
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1: The object is a VARIABLE but has multiple subindices.")
                .arg(hexIndex));
    for (const quint8 subIndex : subIndices)
        checkSubIndex(index, subIndex, object.objecttype);
}

void ModelCheckObjectRules::checkSubIndexZero(quint16 index, const QList<quint8> &subIndices)
{
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    const bool applies = sub0Applies(index);
    const bool hasSubIndexZero = subIndices.first() == 0;
    const quint8 highest = subIndices.last();
    if (hasSubIndexZero && applies && context.mayCorrect() && highest != quint8(context.value(index, 0))) {
        context.output.message(
            ModelChecker::tr("<i>Corrected: Object 0x%1</i>: The value of subindex 0 does not fit "
                             "to the highest subindex.")
                .arg(hexIndex));
        context.corrected = true;
        context.correctDefaultValue(index, 0, QString::number(highest));
    }

    SUBINDEX_DATA_T sub0 = context.subIndex(index, 0);
    if (!sub0.defaultineds && applies)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0:The 'default value' flag must be "
                             "set for this subindex.")
                .arg(hexIndex));
    if (sub0.implementation != ManagedConst && sub0.implementation != VirtualObject && applies &&
        context.mayCorrect() && sub0.accesstype == QLatin1String("const")) {
        context.output.message(ModelChecker::tr("<i>Corrected: Object 0x%1-0</i>:'Managed Const' is used as "
                                                "implementation type for this subindex.")
                                   .arg(hexIndex));
        context.corrected = true;
        sub0.implementation = ManagedConst;
        context.correctSubIndex(index, 0, sub0);
    }
    if (!ModelCheckCANopenContext::defaultGoesToEds(sub0))
        context.output.message(
            ModelChecker::tr("Warning: Object 0x%1-0:The defaultvalue of this subindex should be "
                             "written into the EDS/XDD file.")
                .arg(hexIndex));
}

void ModelCheckObjectRules::checkSubIndex(quint16 index, quint8 subIndex, quint32 objectType)
{
    const SUBINDEX_DATA_T data = context.subIndex(index, subIndex);
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    const QString hexSubIndex = ModelCheckOutput::hexSubIndex(subIndex);

    if (!context.limitCheckEnabled && data.limitineds && index >= 0x1000)
        context.output.message(
            ModelChecker::tr("Warning: Object 0x%1-0x%2: Limit Check is activated, but it is "
                             "deactivated in the global settings.")
                .arg(hexIndex, hexSubIndex));
    if ((objectType == Array || objectType == Record) && data.name.trimmed().isEmpty())
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The object does not have a "
                             "name. (Required for EDS)")
                .arg(hexIndex, hexSubIndex));
    if (data.implementation == ApplicationVariable) {
        if (data.varname.trimmed().isEmpty())
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The variable name is missing.")
                    .arg(hexIndex, hexSubIndex));
        else if (data.varname.contains(QLatin1Char(' ')) || data.varname.contains(QLatin1Char(',')) ||
                 data.varname.contains(QLatin1Char(';')))
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The variable name contains "
                                 "invalid characters like spaces or commas.")
                    .arg(hexIndex, hexSubIndex));
    }
    if (!validAccessTypes.contains(data.accesstype))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The access type '%3' is "
                             "invalid. Use ro, rw, const, wo, rww or rwr instead.")
                .arg(hexIndex, hexSubIndex, data.accesstype));
    if (data.implementation == ManagedConst && data.accesstype.contains(QLatin1Char('w')))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The implementation type is "
                             "Managed Const, but the access type allows write access.")
                .arg(hexIndex, hexSubIndex));

    for (const auto &type : stringTypes) {
        if (type.dataType != data.datatype)
            continue;
        if (data.implementation == ManagedVariable)
            context.output.error(ModelChecker::tr(type.managedVariableMessage).arg(hexIndex, hexSubIndex));
        if (type.lastRule)
            return;
    }
    if (data.datatype == 0)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: Unknown or unsupported datatype.")
                .arg(hexIndex, hexSubIndex));
    checkRange(index, subIndex, data);
}

void ModelCheckObjectRules::checkRange(quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data)
{
    for (const quint16 type : typesWithoutRange) {
        if (data.datatype == type)
            return;
    }
    if (!data.limitineds)
        return;
    const qint64 low = data.lowlimit.toLongLong(nullptr, 0);
    const qint64 high = data.uplimit.toLongLong(nullptr, 0);
    bool defaultRead = false;
    const qint64 value = data.defaultvalue.toLongLong(&defaultRead, 0);
    if ((low > value || high < value) && defaultRead && high != noUpperLimit)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1-0x%2: The defaultvalue is not in "
                             "the range of the limits.")
                .arg(ModelCheckOutput::hexIndex(index), ModelCheckOutput::hexSubIndex(subIndex)));
}

void ModelCheckObjectRules::checkVariableNames()
{
    QHash<QString, QPair<quint16, quint8>> holders;
    const auto objects = context.indices(0, 0xFFFF);
    for (const quint16 index : objects) {
        const auto subIndices = context.subIndices(index);
        for (const quint8 subIndex : subIndices) {
            const SUBINDEX_DATA_T data = context.subIndex(index, subIndex);
            const QString name = data.varname.trimmed();
            if (data.implementation != ApplicationVariable || name.isEmpty())
                continue;
            const auto holder = holders.constFind(name);
            if (holder == holders.constEnd()) {
                holders.insert(name, {index, subIndex});
                continue;
            }
            context.output.message(
                ModelChecker::tr("<strong>Warning: </strong>Object 0x%1-0x%2: Variable name '%3' is "
                                 "already used by object 0x%4-0x%5.")
                    .arg(ModelCheckOutput::hexIndex(index), ModelCheckOutput::hexSubIndex(subIndex), name,
                         ModelCheckOutput::hexIndex(holder->first),
                         ModelCheckOutput::hexSubIndex(holder->second)));
        }
    }
}
