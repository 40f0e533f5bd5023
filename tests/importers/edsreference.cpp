#include "edsreference.h"

#include "store/objectdatabase.h"

#include <QDir>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>

namespace {

bool completedPdoObject(quint16 index)
{
    return index >= 0x1400 && index <= 0x1BFF;
}

// One line per differing field: "2000sub1 name: "Got" instead of "Want"".
void compare(QStringList &found, const QString &where, const char *field, const QString &got,
             const QString &want)
{
    if (got != want)
        found
            << QStringLiteral("%1 %2: \"%3\" instead of \"%4\"").arg(where, QLatin1String(field), got, want);
}

QString flag(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

void compareEntry(QStringList &found, const QString &where, const SUBINDEX_DATA_T &data,
                  const QJsonObject &expected)
{
    compare(found, where, "name", data.name, expected.value("name").toString());
    compare(found, where, "data type", QString::number(data.datatype),
            QString::number(expected.value("datatype").toInt()));
    compare(found, where, "access", data.accesstype, expected.value("access").toString());
    compare(found, where, "default", data.defaultvalue, expected.value("default").toString());
    compare(found, where, "mappable", flag(data.pdomapping.isMappable()),
            flag(expected.value("mappable").toBool()));
    const QString low = expected.value("low").toString();
    const QString high = expected.value("high").toString();
    const bool limited = !low.isEmpty() || !high.isEmpty();
    compare(found, where, "limits given", flag(data.limitineds), flag(limited));
    if (limited) {
        compare(found, where, "low limit", data.lowlimit, low);
        compare(found, where, "high limit", data.uplimit, high);
    }
}

} // namespace

QStringList EdsReference::testFiles()
{
    QStringList files;
    const QDir folder(QStringLiteral(KESTREL_SHARED_TESTDATA_DIR "/eds"));
    const auto names = folder.entryList({QStringLiteral("*.eds"), QStringLiteral("*.dcf")}, QDir::Files,
                                        QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names)
        files << folder.filePath(name);
    return files;
}

QJsonObject EdsReference::read(const QString &file, QString &error)
{
    if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty()) {
        error = QStringLiteral("python3 is needed for the independent reading of the file");
        return QJsonObject();
    }
    QProcess reader;
    reader.start(QStringLiteral("python3"), {qEnvironmentVariable("KESTREL_SOURCE_DIR") +
                                                 QStringLiteral("/tests/importers/eds_reference.py"),
                                             file});
    if (!reader.waitForFinished(30000) || reader.exitCode() != 0) {
        error = QString::fromUtf8(reader.readAllStandardError());
        return QJsonObject();
    }
    const QJsonObject objects = QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
    if (objects.isEmpty())
        error = QStringLiteral("the reference reader found no object in %1").arg(file);
    return objects;
}

QStringList EdsReference::differences(ObjectDataBase &store, quint8 line, const QJsonObject &reading)
{
    QStringList found;
    const auto indices = store.getIndices(line);
    for (const quint16 index : indices) {
        if (!reading.contains(QString::number(index)) && !completedPdoObject(index))
            found << QStringLiteral("%1 is not in the file").arg(index, 4, 16, QChar('0'));
    }
    for (auto object = reading.constBegin(); object != reading.constEnd(); ++object) {
        const quint16 index = quint16(object.key().toUInt());
        const QString where = QStringLiteral("%1").arg(index, 4, 16, QChar('0'));
        const QJsonObject expected = object.value().toObject();
        INDEX_DATA_T stored;
        if (!store.getIndex(line, index, stored)) {
            found << where + QStringLiteral(" is missing");
            continue;
        }
        compare(found, where, "name", stored.name, expected.value("name").toString());
        compare(found, where, "object type", QString::number(stored.objecttype),
                QString::number(expected.value("objecttype").toInt()));
        const QJsonObject entries = expected.value("entries").toObject();
        QStringList wanted;
        for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry)
            wanted << entry.key();
        QStringList got;
        const auto subIndices = store.getSubIndices(line, index);
        for (const quint8 subIndex : subIndices)
            got << QString::number(subIndex);
        std::sort(wanted.begin(), wanted.end());
        std::sort(got.begin(), got.end());
        compare(found, where, "sub-indices", got.join(','), wanted.join(','));
        for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
            SUBINDEX_DATA_T data;
            const QString at = where + QStringLiteral("sub") + entry.key();
            if (store.getSubIndex(line, index, quint8(entry.key().toUInt()), data))
                compareEntry(found, at, data, entry.value().toObject());
        }
    }
    return found;
}
