#include "objdictpredefwriter.h"

#include "objdictcontext.h"
#include "objdictdialect.h"

#include <QTextStream>

namespace {

const QString nodeIdPrefix = QStringLiteral("$NODEID+");

QString hexIndex(quint16 index)
{
    return QString::number(index, 16).toUpper();
}

} // namespace

ObjDictPredefWriter::ObjDictPredefWriter(const ObjDictContext &context)
    : context(context)
{}

bool ObjDictPredefWriter::usesNodeId(quint8 line) const
{
    for (const quint16 index : context.model.indices(line, 0x1400, 0x19FF)) {
        const SUBINDEX_DATA_T *cobId = context.model.sub(line, index, 1);
        if (cobId && cobId->defaultvalue.contains(nodeIdPrefix))
            return true;
    }
    return false;
}

QString ObjDictPredefWriter::copyBlock(quint8 line, quint16 index, int subIndex, bool multiLine) const
{
    const QString object = (multiLine ? QStringLiteral("%1, ").arg(line) : QString()) + QStringLiteral("0x") +
                           hexIndex(index) + QStringLiteral(", ") + QString::number(subIndex);
    return QStringLiteral("\t\tret = coOdGetDefaultVal_u32(") + object + QStringLiteral(", &cobId);\n") +
           QStringLiteral("\t\tif (ret == RET_OK) {\n\t\t\tret = coOdSetCobid(") + object +
           QStringLiteral(", cobId);\n\t\t}\n");
}

QString ObjDictPredefWriter::group(quint8 line, quint16 first, quint16 last, const QString &title,
                                   bool bothSubIndices, bool multiLine) const
{
    const QList<quint16> indices = context.model.indices(line, first, last);
    if (indices.isEmpty())
        return QString();
    QString text = title;
    for (const quint16 index : indices) {
        const SUBINDEX_DATA_T *cobId = context.model.sub(line, index, 1);
        const QString value = cobId ? cobId->defaultvalue : QString();
        const int nodeId = value.indexOf(nodeIdPrefix);
        if (bothSubIndices || nodeId < 0) {
            text += copyBlock(line, index, 1, multiLine);
            if (bothSubIndices)
                text += copyBlock(line, index, 2, multiLine);
            continue;
        }
        const QString offset = value.mid(nodeId + nodeIdPrefix.size());
        if (multiLine)
            text += QStringLiteral("\t\tcobId = (UNSIGNED32)nodeId + (UNSIGNED32)%1;\n"
                                   "\t\tret = coOdSetCobid(%2, 0x%3, 1, cobId);\n\t\n")
                        .arg(offset)
                        .arg(line)
                        .arg(hexIndex(index));
        else
            text += QStringLiteral("\t\tcobId = nodeId + %1;\n\t\tret = coOdSetCobid(0x%2, 1, cobId);\n\t\n")
                        .arg(offset, hexIndex(index));
    }
    return text;
}

QString ObjDictPredefWriter::lineBlocks(quint8 line, bool multiLine) const
{
    if (multiLine)
        return group(line, 0x1400, 0x15FF, QStringLiteral("\t\t/* RxPDO COB IDs */\n"), false, true) +
               group(line, 0x1800, 0x19FF, QStringLiteral("\n\t\t/* TxPDO COB IDs */\n"), false, true) +
               group(line, 0x1201, 0x127F,
                     QStringLiteral("\n\t\t/* SDO server COB IDs starting at 2nd SDO server */\n"), true,
                     true) +
               group(line, 0x1280, 0x12FF, QStringLiteral("\n\t\t/* SDO client COB IDs */\n"), true, true);
    return group(line, 0x1201, 0x127F, QStringLiteral("\n\t\t/* SDO server COB IDs */\n"), true, false) +
           group(line, 0x1280, 0x12FF, QStringLiteral("\n\t\t/* SDO client COB IDs */\n"), true, false) +
           group(line, 0x1400, 0x15FF, QStringLiteral("\n\t\t/* RxPDO COB IDs */\n"), false, false) +
           group(line, 0x1800, 0x19FF, QStringLiteral("\n\t\t/* TxPDO COB IDs */\n"), false, false);
}

QString ObjDictPredefWriter::opening(const QString &signature) const
{
    return QStringLiteral("\n"
                          "/* Please be careful - this function overwrite the COB-Ids of the\n"
                          "* predefined connection set with values setting up by the KCO\n"
                          "* It can be passed as load indication function to coCanOpenStackInit().\n"
                          "*/\n") +
           (context.dialect.userCobIdFunction ? QString()
                                              : QStringLiteral("#ifdef GEN_OVERWRITE_PREDEF_CONN_SET\n")) +
           signature + QStringLiteral("\n{\n\tRET_T ret = RET_OK;\n\tUNSIGNED32 cobId = 0ul;\n");
}

void ObjDictPredefWriter::write(QTextStream &out) const
{
    if (context.multiLineForm())
        writeMultiLine(out);
    else
        writeSingleLine(out);
}

void ObjDictPredefWriter::writeSingleLine(QTextStream &out) const
{
    if (context.model.lineNumber(QStringLiteral("overwrite_predef"), 0) == 0)
        return;
    const bool older = context.dialect.userCobIdFunction;
    out << opening(older ? QStringLiteral("RET_T userOverwriteCobIdSettings(void)")
                         : QStringLiteral("RET_T genLoadIndication(UNSIGNED8 subIndex)"));
    if (usesNodeId(0))
        out << "\tUNSIGNED8 nodeId = coNmtGetNodeId();\n";
    out << "\n"
        << (older ? "\t{\n" : "\tif ((subIndex == 1) || (subIndex == 2)) {\n") << lineBlocks(0, false)
        << "\t}\n\treturn ret;\n}\n";
    if (!older)
        out << "#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */\n";
}

void ObjDictPredefWriter::writeMultiLine(QTextStream &out) const
{
    QList<quint8> lines;
    bool nodeId = false;
    for (const quint8 line : context.model.lines()) {
        if (context.model.lineNumber(QStringLiteral("overwrite_predef"), line) == 0)
            continue;
        lines << line;
        nodeId = nodeId || usesNodeId(line);
    }
    if (lines.isEmpty())
        return;
    const bool older = context.dialect.userCobIdFunction;
    out << opening(older ? QStringLiteral("RET_T userOverwriteCobIdSettingsLine(UNSIGNED8 canLine)")
                         : QStringLiteral("RET_T genLoadIndication(UNSIGNED8 canLine, UNSIGNED8 subIndex)"));
    if (nodeId)
        out << "\tUNSIGNED8 nodeId = 0x00;\n";
    for (const quint8 line : lines) {
        out << "\n";
        if (older)
            out << "\tif (canLine == " << line << ") {\n";
        else
            out << "\tif (((subIndex == 1) || (subIndex == 2)) && (canLine == " << line << ")) {\n";
        if (nodeId)
            out << "\t\tnodeId = coNmtGetNodeId(" << line << ");\n";
        out << lineBlocks(line, true) << "\t}\n";
    }
    out << "\treturn ret;\n}\n";
    if (older) {
        // The older stack calls one function, which hands each line to the function above.
        out << "\nRET_T userOverwriteCobIdSettings(void)\n{\n    RET_T retVal = RET_OK;\n";
        for (const quint8 line : lines)
            out << "    retVal = userOverwriteCobIdSettingsLine(" << line << ");\n"
                << "    if (retVal != RET_OK) {\n        return(retVal);\n    }\n";
        out << "    return(retVal);\n}\n";
    }
    if (!older)
        out << "#endif /* GEN_OVERWRITE_PREDEF_CONN_SET */\n";
}
