#include "multiprocontext.h"
#include "pgncontext.h"

#include "multiprodialect.h"
#include "objdictdialect.h"

#include "generation/commongeneratorhelperbase.h"
#include "store/objectdatabase.h"

#include <algorithm>

namespace {

constexpr quint8 lineLimit = 32;

QList<quint8> linesBelowLimit(ObjectDataBase &store)
{
    QList<quint8> lines;
    const QList<quint8> all = store.getLines();
    for (const quint8 line : all) {
        if (line < lineLimit)
            lines << line;
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

int typeOf(ObjectDataBase &store, quint8 line)
{
    return store.getGeneralSetting(QStringLiteral("line%1type").arg(line)).trimmed().toInt();
}

} // namespace

MultiProFlags MultiProFlags::read(ObjectDataBase &store, bool multiLine, bool bootloader)
{
    MultiProFlags flags;
    flags.multiLine = multiLine;
    for (const quint8 line : linesBelowLimit(store)) {
        const int type = typeOf(store, line);
        flags.hasCANopen = flags.hasCANopen || MultiProContext::isCANopenType(type);
        flags.hasJ1939 = flags.hasJ1939 || PgnContext::isJ1939Type(type);
        flags.hasRawCAN = flags.hasRawCAN || PgnContext::isRawCanType(type);
    }
    flags.rawCanOnly = flags.hasRawCAN && !flags.hasCANopen && !flags.hasJ1939;
    flags.bootloaderMode =
        bootloader && !multiLine && store.getGeneralSetting(QStringLiteral("uds_bl_setting")) == QLatin1String("1");
    if (flags.bootloaderMode)
        flags.rawCanOnly = false;
    flags.fdSupport = store.getGeneralSetting(QStringLiteral("canfd_supported")).trimmed().toInt() > 0;
    return flags;
}

QString MultiProFlags::filePattern() const
{
    if (rawCanOnly)
        return QStringLiteral("%1/gen_rawcan.c");
    if (bootloaderMode)
        return QStringLiteral("%1/gen_uds.c");
    return QStringLiteral("%1/gen_mp.c");
}

MultiProContext::MultiProContext(ObjectDataBase &store, const MultiProDialect &dialect, const MultiProFlags &flags,
                                 bool compact)
    : store(store)
    , dialect(dialect)
    , flags(flags)
    , model(&store)
    , objDict(model, dialect.objDict)
    , helper(dialect.objDict.createHelper(&store))
    , lineList(linesBelowLimit(store))
{
    for (const quint8 line : std::as_const(lineList))
        types.insert(line, typeOf(store, line));
    objDict.compactDescription = compact;
    objDict.multiLine = flags.multiLine;
    objDict.canFd = flags.fdSupport;
    if (flags.multiLine)
        objDict.objectLines = objDict.initLines();
    objDict.staticSrdo = model.number(QStringLiteral("static_srdo_data")) == 1;
    objDict.collectStaticSrdoEntries();
}

MultiProContext::~MultiProContext() = default;

QList<quint8> MultiProContext::projectLines(ObjectDataBase &store)
{
    return linesBelowLimit(store);
}

int MultiProContext::lineType(quint8 line) const
{
    return types.value(line);
}

bool MultiProContext::udsOn() const
{
    return number("udsserver_supported") == 1 || number("udsclient_supported") == 1;
}

qint64 MultiProContext::number(const char *key) const
{
    return model.number(QString::fromLatin1(key));
}

bool MultiProContext::cia510() const
{
    return store.getJ1939Setting(QStringLiteral("cia510serversupport")).trimmed().toULongLong(nullptr, 0) == 1;
}
