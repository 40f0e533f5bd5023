#include "modelcheckpdorules.h"

#include "busmodel/cohelper.h"
#include "generation/modelcheckcanopencontext.h"
#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr quint32 disabledBit = 0x80000000u;
constexpr quint32 identifierMask = 0x1FFFFFFFu;
// A table holds 64 entries at most; a higher count is a mark, not a number of entries.
constexpr quint64 countedEntries = 65;
constexpr quint8 ApplicationVariable = 2;

struct PdoRange
{
    quint16 first;
    quint16 last;
};

// Receive before transmit, in both walks.
const PdoRange mappingRanges[] = {{0x1600, 0x17FF}, {0x1A00, 0x1BFF}};
const PdoRange communicationRanges[] = {{0x1400, 0x15FF}, {0x1800, 0x19FF}};
constexpr PdoRange transmitCommunication = {0x1800, 0x19FF};
// The transmit PDOs of the pre-defined connection set, the only ones the correction touches.
constexpr PdoRange predefinedTransmitMapping = {0x1A00, 0x1A03};
constexpr PdoRange srdoCommunication = {0x1301, 0x1340};
constexpr PdoRange srdoMapping = {0x1381, 0x13C0};

// Access types that a transmit PDO cannot read from, or that a receive PDO may not write to.
const QStringList transmitForbiddenAccess{QStringLiteral("wo"), QStringLiteral("rww")};
const QStringList receiveForbiddenAccess{QStringLiteral("ro"), QStringLiteral("const"),
                                         QStringLiteral("rwr")};

struct PredefinedCobId
{
    quint16 index;
    quint32 base;
};

// The communication objects of the pre-defined connection set and the COB-ID base of each; sub-index 1
// holds "$nodeid+" and the base, as three digits or as eight with any of the two high flag bits.
const PredefinedCobId predefinedCobIds[] = {
    {0x1400, 0x200}, {0x1401, 0x300}, {0x1402, 0x400}, {0x1403, 0x500},
    {0x1800, 0x180}, {0x1801, 0x280}, {0x1802, 0x380}, {0x1803, 0x480},
};
const quint32 predefinedFlags[] = {0x00000000u, 0x80000000u, 0x40000000u, 0xC0000000u};

QStringList predefinedForms(quint32 base)
{
    QStringList forms{QStringLiteral("$nodeid+0x%1").arg(base, 0, 16)};
    for (const quint32 flags : predefinedFlags)
        forms << QStringLiteral("$nodeid+0x%1").arg(flags | base, 8, 16, QLatin1Char('0'));
    return forms;
}

} // namespace

ModelCheckPdoRules::ModelCheckPdoRules(ModelCheckCANopenContext &checkContext)
    : context(checkContext)
{}

void ModelCheckPdoRules::checkMapping()
{
    for (const auto &range : mappingRanges) {
        const auto objects = context.indices(range.first, range.last);
        for (const quint16 index : objects)
            checkMappingObject(index);
    }
}

void ModelCheckPdoRules::checkMappingObject(quint16 index)
{
    const quint16 communication = index - 0x200;
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    if (!context.exists(communication))
        context.output.error(ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The corresponding PDO "
                                              "communication parameter object 0x%2 does not exist.")
                                 .arg(hexIndex, ModelCheckOutput::hexIndex(communication)));
    const quint64 entryCount = context.value(index, 0);
    const auto subIndices = context.subIndices(index);
    if (entryCount < countedEntries && subIndices.size() < 2)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1 of line %2: The PDO mapping table "
                             "does not contain any mapped object.")
                .arg(hexIndex)
                .arg(context.line));

    QString referenceAccess;
    for (const quint8 subIndex : subIndices) {
        const QString access = context.subIndex(index, subIndex).accesstype;
        if (subIndex == 0) {
            referenceAccess = access;
            if (access == QLatin1String("rw"))
                dynamicMappingUsed = true;
        } else if (access != referenceAccess) {
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: All subindices of a PDO mapping "
                                 "object must have the same access type. (const for static mapping "
                                 "or rw for dynamic mapping")
                    .arg(hexIndex));
        }
    }

    quint32 pdoBits = 0;
    for (const quint8 subIndex : subIndices) {
        if (subIndex > 0)
            checkMappingEntry(index, subIndex, entryCount, pdoBits);
    }
    if (pdoBits > (context.canFd ? 512u : 64u))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: Size of PDO exceeds the limit. ")
                .arg(hexIndex));
    if (entryCount > quint64(context.subIndices(index, 1).size()) && entryCount < countedEntries)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1:  Invalid number of mapping entries.")
                .arg(hexIndex));
    if (index >= predefinedTransmitMapping.first && index <= predefinedTransmitMapping.last &&
        referenceAccess == QLatin1String("rw") && entryCount == 0 && context.mayCorrect())
        disableEmptyTransmitPdo(index);
}

void ModelCheckPdoRules::checkMappingEntry(quint16 index, quint8 entry, quint64 entryCount, quint32 &pdoBits)
{
    const quint32 value = quint32(context.value(index, entry));
    const quint8 length = value & 0xFF;
    const bool active = entry <= entryCount;
    if (active)
        pdoBits += length;
    if (length >= 1 && length <= 7)
        bitwiseMappingUsed = true;
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    if (active && value < 0x10000) {
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1:%2 is an active mapping entry but "
                             "maps no object (empty entry).")
                .arg(hexIndex)
                .arg(entry));
        return;
    }
    const quint16 mappedIndex = quint16(value >> 16);
    const quint8 mappedSubIndex = quint8(value >> 8);
    // Indices below 8 are the dummy entries of the basic data types: they only take room.
    if (mappedIndex < 8)
        return;

    const QString mappedHexIndex = ModelCheckOutput::hexIndex(mappedIndex);
    const QString mappedSub = QString::number(mappedSubIndex);
    if (!context.exists(mappedIndex, mappedSubIndex))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The mapped object 0x%2:%3 does not exist.")
                .arg(hexIndex, mappedHexIndex, mappedSub));
    const SUBINDEX_DATA_T mapped = context.subIndex(mappedIndex, mappedSubIndex);
    if (!mapped.pdomapping.isMappable())
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1: PDO mapping is not allowed for object 0x%2:%3.")
                .arg(hexIndex, mappedHexIndex, mappedSub));
    const quint32 typeBits = COHelper::getDataLengthBits(mapped.datatype);
    if (length < typeBits)
        context.output.message(
            ModelChecker::tr("Warning: Object 0x%1: The size of the mapped object 0x%2:%3 is too small.")
                .arg(hexIndex, mappedHexIndex, mappedSub));
    else if (length > typeBits)
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1: The size of the mapped object 0x%2:%3 is too large.")
                .arg(hexIndex, mappedHexIndex, mappedSub));

    if (index >= transmitCommunication.first) {
        if (transmitForbiddenAccess.contains(mapped.accesstype))
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The access right of the mapped "
                                 "object 0x%2:%3 does not fit for a TPDO.")
                    .arg(hexIndex, mappedHexIndex, mappedSub));
    } else if (receiveForbiddenAccess.contains(mapped.accesstype)) {
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The access right of the mapped "
                             "object 0x%2:%3 does not fit for an RPDO.")
                .arg(hexIndex, mappedHexIndex, mappedSub));
    }
}

void ModelCheckPdoRules::disableEmptyTransmitPdo(quint16 mappingIndex)
{
    const quint16 communication = mappingIndex - 0x200;
    const QString expression = context.text(communication, 1);
    const QString disabled = disabledCobId(expression);
    if (disabled == expression)
        return;
    context.output.message(
        ModelChecker::tr("<i>Corrected: Object 0x%1</i>: The COB-ID of this PDO has been disabled "
                         "(%2), because it does not contain active mapping entries.")
            .arg(ModelCheckOutput::hexIndex(communication), disabled));
    context.corrected = true;
    context.correctDefaultValue(communication, 1, disabled);
}

QString ModelCheckPdoRules::disabledCobId(const QString &expression)
{
    static const QRegularExpression pattern(QStringLiteral("(\\$nodeid\\+)*(0x[0-9A-Fa-f]+)"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(expression);
    if (!match.hasMatch())
        return expression;
    const QString digits = match.captured(2);
    const quint32 value = digits.toUInt(nullptr, 0);
    const QString number = (value & disabledBit) != 0
                               ? digits
                               : QStringLiteral("0x%1").arg(value | disabledBit, 8, 16, QLatin1Char('0'));
    if (match.captured(0) == digits)
        return number;
    return match.captured(1) + number;
}

void ModelCheckPdoRules::checkCommunication()
{
    cobIds.clear();
    for (const auto &range : communicationRanges) {
        const auto objects = context.indices(range.first, range.last);
        for (const quint16 index : objects)
            checkCommunicationObject(index);
    }
}

void ModelCheckPdoRules::checkCommunicationObject(quint16 index)
{
    const quint16 mapping = index + 0x200;
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    const bool hasMapping = context.exists(mapping);
    if (!hasMapping)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The corresponding PDO mapping "
                             "object 0x%2 does not exist.")
                .arg(hexIndex, ModelCheckOutput::hexIndex(mapping)));
    if (!ModelCheckCANopenContext::defaultGoesToEds(context.subIndex(index, 1)))
        context.output.message(
            ModelChecker::tr(
                "<strong>Hint: </strong>Subindex 1 of 0x%2 should have its default value in the EDS file.")
                .arg(hexIndex));
    if (!ModelCheckCANopenContext::defaultGoesToEds(context.subIndex(index, 2)))
        context.output.message(
            ModelChecker::tr(
                "<strong>Hint: </strong>Subindex 2 of 0x%2 should have its default value in the EDS file.")
                .arg(hexIndex));

    const QString cobIdText = context.text(index, 1);
    QString expression = cobIdText.trimmed();
    const QLatin1String nodeIdTerm("$nodeid+");
    const bool nodeRelative = expression.contains(nodeIdTerm, Qt::CaseInsensitive);
    expression = expression.remove(nodeIdTerm, Qt::CaseInsensitive).trimmed();
    bool ok = false;
    const quint32 cobId = expression.toUInt(&ok, 0);
    // A disabled PDO, or one whose COB-ID is no number, has nothing more to check.
    if (!ok || (cobId & disabledBit) != 0)
        return;

    if (hasMapping && context.value(mapping, 0) == 0)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: PDO is enabled but its mapping "
                             "table (0x%2) is empty (sub 0 = 0).")
                .arg(hexIndex, ModelCheckOutput::hexIndex(mapping)));
    const QString key =
        QStringLiteral("%1:0x%2").arg(nodeRelative ? 1 : 0).arg(cobId & identifierMask, 0, 16);
    const auto holder = cobIds.constFind(key);
    if (holder == cobIds.constEnd()) {
        cobIds.insert(key, index);
        return;
    }
    context.output.error(
        ModelChecker::tr(
            "<strong>Error: </strong>Object 0x%1: COB-ID '%2' is already used by PDO object 0x%3.")
            .arg(hexIndex, cobIdText, ModelCheckOutput::hexIndex(holder.value())));
}

void ModelCheckPdoRules::checkTimers()
{
    const auto objects = context.indices(transmitCommunication.first, transmitCommunication.last);
    for (const quint16 index : objects) {
        if (!context.exists(index, 3) || !context.exists(index, 5))
            continue;
        const quint64 eventTimer = context.value(index, 5);
        // The inhibit time counts in 100 microseconds, the event timer in milliseconds.
        const quint64 inhibitTime = context.value(index, 3) / 10;
        if (eventTimer != 0 && inhibitTime >= eventTimer)
            context.output.message(
                ModelChecker::tr("<strong>Warning: </strong>Subindex 3 and 5 of 0x%1: Event timer "
                                 "value should be greater than inhibit time value.")
                    .arg(ModelCheckOutput::hexIndex(index)));
    }
}

void ModelCheckPdoRules::checkSrdo()
{
    const auto communicationObjects = context.indices(srdoCommunication.first, srdoCommunication.last);
    for (const quint16 index : communicationObjects) {
        const quint16 mapping = index + 0x80;
        if (!context.exists(mapping))
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The corresponding SRDO mapping "
                                 "object 0x%2 does not exist.")
                    .arg(ModelCheckOutput::hexIndex(index), ModelCheckOutput::hexIndex(mapping)));
    }
    const auto mappingObjects = context.indices(srdoMapping.first, srdoMapping.last);
    for (const quint16 index : mappingObjects)
        checkSrdoMappingObject(index);
}

void ModelCheckPdoRules::checkSrdoMappingObject(quint16 index)
{
    const QString hexIndex = ModelCheckOutput::hexIndex(index);
    const auto entries = context.subIndices(index, 1);
    for (const quint8 entry : entries) {
        const quint32 value = quint32(context.value(index, entry));
        const quint16 mappedIndex = quint16(value >> 16);
        const quint8 mappedSubIndex = quint8(value >> 8);
        const QString mappedHexIndex = ModelCheckOutput::hexIndex(mappedIndex);
        const QString mappedSub = QString::number(mappedSubIndex);
        if (!context.exists(mappedIndex, mappedSubIndex)) {
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The object 0x%2:%3 mapped into "
                                 "an SRDO does not exist.")
                    .arg(hexIndex, mappedHexIndex, mappedSub));
            continue;
        }
        const SUBINDEX_DATA_T mapped = context.subIndex(mappedIndex, mappedSubIndex);
        if (mapped.implementation != ApplicationVariable)
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The object 0x%2:%3 mapped into "
                                 "an SRDO must be an application variable.")
                    .arg(hexIndex, mappedHexIndex, mappedSub));
        if (!mapped.pdomapping.isMappable())
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1: The PDO mapping must be enabled "
                                 "for object 0x%2:%3 to use it in an SRDO.")
                    .arg(hexIndex, mappedHexIndex, mappedSub));
    }
}

void ModelCheckPdoRules::checkMappingUse()
{
    if (bitwiseMappingUsed && context.granularity == 8)
        context.output.message(
            ModelChecker::tr("<strong>Warning: </strong>Bitwise mapping cannot be used with a "
                             "granularity of 8. Correct device description settings or PDO "
                             "mapping."));
    if (bitwiseMappingUsed && !context.bitwiseMappingEnabled)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Bitwise mapping not enabled in general settings. "
                             "Correct general settings or PDO mapping."));
    // Keeps its error prefix, but does not count: the run goes on.
    if (dynamicMappingUsed && context.granularity == 0)
        context.output.message(
            ModelChecker::tr("<strong>Error: </strong>Dynamic mapping cannot be used with a "
                             "granularity of 0. Correct device description settings or PDO "
                             "mapping."));
}

void ModelCheckPdoRules::checkPredefinedConnectionSet()
{
    if (context.database->getLineGeneralSetting(QStringLiteral("overwrite_predef"), context.line).toInt() !=
        0)
        return;
    QStringList warnings;
    for (const auto &row : predefinedCobIds) {
        if (!context.exists(row.index))
            continue;
        if (predefinedForms(row.base).contains(context.text(row.index, 1).toLower()))
            continue;
        warnings << ModelChecker::tr("Warning: Object 0x%1-0x01: The COB-ID for this PDO does not follow the "
                                     "pre-defined connection set.")
                        .arg(ModelCheckOutput::hexIndex(row.index));
    }
    if (warnings.isEmpty())
        return;
    for (const auto &warning : std::as_const(warnings))
        context.output.message(warning);
    context.output.message(
        ModelChecker::tr("Enable CANopen Stack Settings -> Overwrite pre-defined connection set "
                         "and call userOverwriteCobIdSettings() to use these COB-ID settings.\n\n"));
}
