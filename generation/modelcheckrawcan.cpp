#include "modelcheckrawcan.h"

#include "busmodel/cohelper.h"
#include "generation/modelcheckbitranges.h"
#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QHash>
#include <QPair>

namespace {

const quint8 directions[] = {Direction::Receive, Direction::Transmit};

constexpr quint32 extendedFlag = 1u << 29;
constexpr quint32 identifierMask = 0x1FFFFFFFu;
constexpr quint32 highestStandardIdentifier = 0x7FF;
constexpr quint8 ApplicationVariable = 2;

QString hexIdentifier(quint32 id)
{
    return QString::number(id & identifierMask, 16);
}

// The signal, or when it cannot be read the values a new one starts with.
DataElement signalRecord(ObjectDataBase *database, quint8 line, quint32 id, quint8 direction, quint32 number)
{
    DataElement element;
    if (!database->getDataElement(line, id, direction, number, element))
        return DataElement();
    return element;
}

} // namespace

ModelCheckRawCan::ModelCheckRawCan(ObjectDataBase *store, quint8 lineInWork, ModelCheckOutput &sink)
    : database(store)
    , line(lineInWork)
    , output(sink)
{}

void ModelCheckRawCan::check()
{
    payloadBits = database->getGeneralSetting(QStringLiteral("canfd_supported")).toInt() == 1 ? 512 : 64;
    checkBothDirections();
    for (const quint8 direction : directions) {
        const auto ids = database->getCANIDs(line, direction);
        for (const quint32 id : ids)
            checkMessage(direction, id);
    }
    checkVariableNames();
}

void ModelCheckRawCan::checkBothDirections()
{
    const auto received = database->getCANIDs(line, Direction::Receive);
    const auto transmitted = database->getCANIDs(line, Direction::Transmit);
    for (const quint32 id : transmitted) {
        if (received.contains(id))
            output.message(
                ModelChecker::tr("<strong>Warning: </strong>CAN-ID 0x%1 appears in both TX and RX — this is "
                                 "unusual and may be a configuration error.")
                    .arg(hexIdentifier(id)));
    }
}

void ModelCheckRawCan::checkMessage(quint8 direction, quint32 id)
{
    const QString hexId = hexIdentifier(id);
    if ((id & identifierMask) > highestStandardIdentifier && (id & extendedFlag) == 0)
        output.error(
            ModelChecker::tr("<strong><font color='red'>Error: </font></strong> CAN-ID 0x%1 is higher then "
                             "0x7ff, but extended flag is not set.")
                .arg(hexId));
    ModelCheckBitRanges ranges;
    quint32 highestEnd = 0;
    const auto signalNumbers = database->getDataElements(line, id, direction);
    for (const quint32 number : signalNumbers) {
        const DataElement element = signalRecord(database, line, id, direction, number);
        if (element.implementation == ApplicationVariable && element.varname.trimmed().isEmpty())
            output.error(ModelChecker::tr(
                             "<strong><font color='red'>Error: </font></strong> Variable name missing for "
                             "signal # %1 in CAN-ID 0x%2")
                             .arg(QString::number(element.number + 1), hexId));
        const quint32 size =
            element.bitsize != 0 ? element.bitsize : COHelper::getDataLengthBits(element.datatype);
        const quint32 end = element.pos + size;
        if (ranges.overlapsAndAdd(element.pos, end))
            output.error(ModelChecker::tr(
                             "<strong><font color='red'>Error: </font></strong> Signal '%1' in CAN-ID 0x%2 "
                             "overlaps with another signal in the same message.")
                             .arg(element.name, hexId));
        highestEnd = qMax(highestEnd, end);
    }
    if (highestEnd > payloadBits)
        output.error(ModelChecker::tr(
                         "<strong><font color='red'>Error: </font></strong> CAN-ID 0x%1: signals require %2 "
                         "bits but the maximum payload is %3 bits.")
                         .arg(hexId, QString::number(highestEnd), QString::number(payloadBits)));
}

void ModelCheckRawCan::checkVariableNames()
{
    QHash<QString, QPair<quint32, quint32>> holders;
    for (const quint8 direction : directions) {
        const auto ids = database->getCANIDs(line, direction);
        for (const quint32 id : ids) {
            const auto signalNumbers = database->getDataElements(line, id, direction);
            for (const quint32 number : signalNumbers) {
                const DataElement element = signalRecord(database, line, id, direction, number);
                const QString name = element.varname.trimmed();
                if (element.implementation != ApplicationVariable || name.isEmpty())
                    continue;
                const auto holder = holders.constFind(name);
                if (holder == holders.constEnd()) {
                    holders.insert(name, {id, element.number});
                    continue;
                }
                output.message(
                    ModelChecker::tr("<strong>Warning: </strong>Signal %1 in CAN-ID 0x%2: variable name '%3' "
                                     "is already used by signal %4 in CAN-ID 0x%5.")
                        .arg(QString::number(element.number + 1), hexIdentifier(id), name,
                             QString::number(holder->second + 1), hexIdentifier(holder->first)));
            }
        }
    }
}
