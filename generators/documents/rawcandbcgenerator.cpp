#include "rawcandbcgenerator.h"

#include "busmodel/cohelper.h"
#include "store/objectdatabase.h"

#include <QRegularExpression>
#include <QTextStream>

namespace {

constexpr quint32 idBits = 0x1FFFFFFFu;
constexpr quint32 extendedFlag = 0x80000000u;

// Identifiers with a flag above the 29 bits are written as extended ones.
quint32 fileId(quint32 id)
{
    return id <= idBits ? id : (id & idBits) | extendedFlag;
}

QString dbcName(const QString &name)
{
    static const QRegularExpression invalid(QStringLiteral("[^0-9a-zA-Z_]"));
    return QString(name).replace(invalid, QStringLiteral("_"));
}

QString quotedText(const QString &text)
{
    return QString(text).replace(QLatin1Char('"'), QLatin1String("\\\""));
}

quint32 elementBits(const DataElement &element)
{
    return element.bitsize != 0 ? element.bitsize : COHelper::getDataLengthBits(element.datatype);
}

bool isSigned(quint16 dataType)
{
    static const QList<quint16> signedTypes{2, 3, 4, 21};
    return signedTypes.contains(dataType);
}

} // namespace

void RawCANDBCGenerator::writeContent(QTextStream &out)
{
    const QList<Message> transmitted = readMessages(Direction::Transmit);
    const QList<Message> received = readMessages(Direction::Receive);
    out << "VERSION \"\"\n\n"
        << "NS_ :\n\n"
        << "BS_:\n\n"
        << "BU_:\n\n";
    writeMessages(out, transmitted);
    writeMessages(out, received);
    out << "\nBA_DEF_ BO_ \"GenMsgCycleTime\" INT 0 100000;\n"
        << "BA_DEF_ BO_ \"GenMsgSendType\" ENUM \"Cyclic\",\"NoMsgSendType\";\n"
        << "BA_DEF_DEF_ \"GenMsgCycleTime\" 0;\n"
        << "BA_DEF_DEF_ \"GenMsgSendType\" \"NoMsgSendType\";\n\n";
    writeComments(out, transmitted);
    writeComments(out, received);
    writeAttributeValues(out, transmitted);
    writeAttributeValues(out, received);
}

QList<RawCANDBCGenerator::Message> RawCANDBCGenerator::readMessages(quint8 direction)
{
    QList<Message> messages;
    const QList<quint32> ids = database->getCANIDs(line, direction);
    for (const quint32 id : ids) {
        Message message;
        if (!database->getCANID(line, id, direction, message.canId))
            continue;
        const QList<quint32> numbers = database->getDataElements(line, id, direction);
        for (const quint32 number : numbers) {
            DataElement element;
            if (database->getDataElement(line, id, direction, number, element))
                message.elements << element;
        }
        messages << message;
    }
    return messages;
}

void RawCANDBCGenerator::writeMessages(QTextStream &out, const QList<Message> &messages)
{
    for (const Message &message : messages) {
        if (abortRequested)
            break;
        const CANID &canId = message.canId;
        QString name = dbcName(canId.name);
        if (name.isEmpty())
            name = QStringLiteral("MSG_%1").arg(canId.id & idBits, 0, 16);
        quint32 bits = 0;
        for (const DataElement &element : message.elements)
            bits = qMax(bits, quint32(element.bitpos) + elementBits(element));
        const quint8 dlc = bits == 0 ? 8 : quint8((bits + 7) / 8);
        out << QStringLiteral("BO_ %1 %2: %3 Vector__XXX\n").arg(fileId(canId.id)).arg(name).arg(dlc);
        for (const DataElement &element : message.elements) {
            QString signalName = dbcName(element.name);
            if (signalName.isEmpty())
                signalName = QStringLiteral("SIG_%1").arg(element.number);
            out << QStringLiteral(" SG_ %1 : %2|%3@1%4 (1,0) [0|0] \"\" Vector__XXX\n")
                       .arg(signalName)
                       .arg(element.bitpos)
                       .arg(elementBits(element))
                       .arg(isSigned(element.datatype) ? QLatin1Char('-') : QLatin1Char('+'));
        }
        out << '\n';
    }
}

void RawCANDBCGenerator::writeComments(QTextStream &out, const QList<Message> &messages)
{
    for (const Message &message : messages) {
        const quint32 id = fileId(message.canId.id);
        if (!message.canId.desc.isEmpty())
            out << QStringLiteral("CM_ BO_ %1 \"%2\";\n").arg(id).arg(quotedText(message.canId.desc));
        for (const DataElement &element : message.elements) {
            if (!element.desc.isEmpty())
                out << QStringLiteral("CM_ SG_ %1 %2 \"%3\";\n")
                           .arg(id)
                           .arg(dbcName(element.name), quotedText(element.desc));
        }
    }
}

void RawCANDBCGenerator::writeAttributeValues(QTextStream &out, const QList<Message> &messages)
{
    for (const Message &message : messages) {
        const quint32 id = fileId(message.canId.id);
        if (message.canId.cycletime_ms != 0) {
            out << QStringLiteral("BA_ \"GenMsgCycleTime\" BO_ %1 %2;\n")
                       .arg(id)
                       .arg(message.canId.cycletime_ms)
                << QStringLiteral("BA_ \"GenMsgSendType\" BO_ %1 0;\n").arg(id);
        } else {
            out << QStringLiteral("BA_ \"GenMsgSendType\" BO_ %1 1;\n").arg(id);
        }
    }
}
