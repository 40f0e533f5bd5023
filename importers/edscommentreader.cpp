#include "edscommentreader.h"

#include "store/objectdatabase.h"

#include <QFile>
#include <QTextStream>

namespace {

// Gives the text to the object or sub-index named by a section head such as "[1a00]" or "[1a00sub1f]".
void attach(const QString &head, const QString &text, ObjectDataBase &store, quint8 line)
{
    bool ok = false;
    const uint index = head.mid(1, 4).toUInt(&ok, 16);
    if (!ok || index > 0xFFFF)
        return;
    const qsizetype sub = head.indexOf(QLatin1String("sub"), 0, Qt::CaseInsensitive);
    if (sub >= 0) {
        const qsizetype start = sub + 3;
        const qsizetype close = head.indexOf(']', start);
        const uint subIndex = head.mid(start, close < 0 ? -1 : close - start).toUInt(&ok, 16);
        SUBINDEX_DATA_T data;
        if (ok && subIndex <= 0xFF && store.getSubIndex(line, quint16(index), quint8(subIndex), data)) {
            data.description = text;
            store.addSubIndex(line, quint16(index), quint8(subIndex), data);
        }
        return;
    }
    INDEX_DATA_T object;
    if (!store.getIndex(line, quint16(index), object))
        return;
    object.description = text;
    store.addIndex(line, quint16(index), object);
    SUBINDEX_DATA_T first;
    if (store.getSubIndex(line, quint16(index), 0, first)) {
        first.description = text;
        store.addSubIndex(line, quint16(index), 0, first);
    }
}

} // namespace

bool EdsCommentReader::apply(const QString &fileName, ObjectDataBase &store, quint8 line)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream in(&file);
    QString head;
    QString text;
    auto close = [&] {
        if (!text.isEmpty())
            attach(head, text, store, line);
        text.clear();
    };
    QString current;
    while (in.readLineInto(&current)) {
        if (current.startsWith(QLatin1String(";;"))) {
            text += current.mid(2) + '\n';
        } else if (current.startsWith('[')) {
            close();
            head = current;
        }
    }
    close();
    return true;
}
