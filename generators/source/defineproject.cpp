#include "defineproject.h"

#include "store/objectdatabase.h"
#include "texttools/helper.h"

namespace {

// Lines from here up belong to the store itself (clipboard, catalogue), never to the device.
constexpr quint8 firstInternalLine = 32;

} // namespace

DefineProject::DefineProject(ObjectDataBase &store)
    : database(store)
{
    const QList<quint8> all = database.getLines();
    for (const quint8 line : all) {
        if (line < firstInternalLine)
            projectLines << line;
    }
    for (int position = 0; position < projectLines.size(); ++position)
        positions << quint8(position);
}

qint64 DefineProject::number(const QString &text, bool anyBase)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok, anyBase ? 0 : 10);
    return ok ? value : 0;
}

QString DefineProject::general(const QString &key) const
{
    return database.getGeneralSetting(key);
}

qint64 DefineProject::generalNumber(const QString &key, bool anyBase) const
{
    return number(general(key), anyBase);
}

bool DefineProject::generalOn(const QString &key) const
{
    return generalNumber(key) > 0;
}

bool DefineProject::generalIsOne(const QString &key) const
{
    return generalNumber(key) == 1;
}

QString DefineProject::j1939(const QString &key) const
{
    return database.getJ1939Setting(key);
}

qint64 DefineProject::j1939Number(const QString &key) const
{
    return number(j1939(key));
}

QString DefineProject::energyBus(const QString &key) const
{
    return database.getEnergyBusSetting(key);
}

QString DefineProject::lineGeneral(const QString &key, quint8 line) const
{
    return database.getLineGeneralSetting(key, line);
}

qint64 DefineProject::lineGeneralNumber(const QString &key, quint8 line, bool anyBase) const
{
    return number(lineGeneral(key, line), anyBase);
}

int DefineProject::lineType(quint8 line) const
{
    return int(generalNumber(QStringLiteral("line%1type").arg(line)));
}

bool DefineProject::isCanopenType(int type)
{
    return type == 1 || type == 5 || type == 6;
}

bool DefineProject::isJ1939Type(int type)
{
    return type == 2 || type == 5 || type == 7;
}

bool DefineProject::isRawCanType(int type)
{
    return type == 4 || type == 6 || type == 7;
}

bool DefineProject::isJ1939WithoutCanopen(int type)
{
    return type == 2 || type == 7;
}

bool DefineProject::anyLine(bool (*protocol)(int type)) const
{
    for (const quint8 line : projectLines) {
        if (protocol(lineType(line)))
            return true;
    }
    return false;
}

int DefineProject::objects(quint8 line, quint16 first, quint16 last) const
{
    return int(database.getIndices(line, first, last).size());
}

int DefineProject::subs(quint8 line, quint16 index) const
{
    return int(database.getSubIndices(line, index, 1).size());
}

int DefineProject::subs0(quint8 line, quint16 index) const
{
    return int(database.getSubIndices(line, index, 0).size());
}

bool DefineProject::exists(quint8 line, quint16 index) const
{
    return database.indexExists(line, index);
}

QString DefineProject::defaultValue(quint8 line, quint16 index, quint8 subIndex) const
{
    return database.getSubIndexDefaultValue(line, index, subIndex);
}

qint64 DefineProject::defaultNumber(quint8 line, quint16 index, quint8 subIndex) const
{
    return number(defaultValue(line, index, subIndex), true);
}

QString DefineProject::bufferList(const QString &key, const QString &fallback) const
{
    const QString value = general(key);
    return Helper::addLowerCaseUtoNumberLists(value.isEmpty() ? fallback : value);
}

qint64 DefineProject::bufferSum(const QString &key, const QString &fallback) const
{
    const QString value = general(key);
    const QStringList parts = (value.isEmpty() ? fallback : value).split(',');
    qint64 sum = 0;
    for (const QString &part : parts)
        sum += number(part);
    return sum;
}
