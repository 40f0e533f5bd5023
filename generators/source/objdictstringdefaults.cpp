#include "objdictstringdefaults.h"

#include "objdictcontext.h"

#include <QByteArray>
#include <QTextStream>

namespace {

// The bytes of a default: "|x" and hexadecimal pairs, or the text in UTF-8.
QByteArray defaultBytes(const QString &text)
{
    if (text.startsWith(QLatin1String("|x")))
        return QByteArray::fromHex(text.mid(2).toLatin1());
    return text.toUtf8();
}

} // namespace

ObjDictStringDefaults::ObjDictStringDefaults(ObjDictContext &context)
    : context(context)
{}

void ObjDictStringDefaults::writeTable(QTextStream &out)
{
    QList<QPair<quint32, QString>> entries;
    quint32 offset = 0;
    for (const quint8 line : context.initLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                if (sub->implementation != 2 || (sub->datatype != 9 && sub->datatype != 10))
                    continue;
                const quint32 key = ObjDictContext::positionKey(line, object.key(), sub.key());
                context.stringDefaultOffsets.insert(key, offset);
                context.stringDefaultLengths.insert(key, sub->size);
                offset += sub->size;
                entries.append({key, sub->defaultvalue});
            }
        }
    }
    if (entries.isEmpty())
        return;
    out << "\n/* definition of string default values for variables */\n"
        << "static CORE_CONST char stringDefaultValues[] = {\n";
    for (const auto &[key, text] : std::as_const(entries)) {
        // Each entry takes exactly its size in the table, so that the offsets of the copies hold:
        // a shorter default is padded with zeros, a longer one cut.
        QByteArray bytes = defaultBytes(text);
        const int size = int(context.stringDefaultLengths.value(key));
        bytes = bytes.left(size).leftJustified(size, '\0');
        out << "/* " << text << " */ \n";
        int column = 0;
        for (const char byte : std::as_const(bytes)) {
            out << QStringLiteral("0x%1, ").arg(quint8(byte), 2, 16, QLatin1Char('0'));
            column += 6;
            if (column > 72) {
                out << "\n";
                column = 0;
            }
        }
        out << "\n";
    }
    out << "0x00}; \n\n";
}

void ObjDictStringDefaults::writeFunction(QTextStream &out) const
{
    out << "\n\nRET_T userOverwriteStringDefaultvalues(void)\n{\n";
    for (auto it = context.stringDefaultOffsets.constBegin(); it != context.stringDefaultOffsets.constEnd();
         ++it) {
        const quint8 line = quint8(it.key() >> 24);
        const quint16 index = quint16((it.key() >> 8) & 0xFFFF);
        const quint8 subIndex = quint8(it.key() & 0xFF);
        const SUBINDEX_DATA_T *sub = context.model.sub(line, index, subIndex);
        out << QStringLiteral("    /* %1: %2 - %3 */\n")
                   .arg(line)
                   .arg(ObjDictContext::hex4(index))
                   .arg(subIndex)
            << QStringLiteral("    memcpy(%1, &stringDefaultValues[%2], %3);\n")
                   .arg(sub ? sub->varname : QString())
                   .arg(it.value())
                   .arg(context.stringDefaultLengths.value(it.key()));
    }
    out << "\n    return(RET_OK);\n}\n";
}
