#include "pgncontext.h"

#include "pgndialect.h"
#include "store/objectdatabase.h"

namespace {

constexpr quint8 lineLimit = 32;
constexpr quint32 addressClaimPgn = 60928;

quint16 lineDirectionKey(quint8 line, quint8 direction)
{
    return quint16(line << 8 | direction);
}

} // namespace

PgnContext::PgnContext(ObjectDataBase &store, const PgnDialect &dialect, bool multiLine)
    : database(store)
    , language(dialect)
    , multi(multiLine)
{
    skipSafe = number(store.getJ1939Setting(QStringLiteral("safetysupport"))) > 0;
    dynamic = number(store.getJ1939Setting(QStringLiteral("dynsupport"))) > 0;
    fd = number(store.getGeneralSetting(QStringLiteral("canfd_supported"))) > 0;
    initialised = number(store.getGeneralSetting(QStringLiteral("init_static_variables"))) == 1;
    const QList<quint8> all = store.getLines();
    for (const quint8 line : all) {
        if (line >= lineLimit)
            continue;
        lineList << line;
        types.insert(line, int(number(store.getGeneralSetting(QStringLiteral("line%1type").arg(line)))));
        for (const quint8 direction : {Direction::Receive, Direction::Transmit}) {
            QMap<quint32, quint32> &counts = sourceCounts[lineDirectionKey(line, direction)];
            const QList<quint32> numbers = store.getPGNs(line, direction);
            for (const quint32 number : numbers) {
                PGN pgn;
                store.getPGN(line, number, direction, pgn);
                counts.insert(number, pgn.multisourceaddress);
            }
        }
    }
    std::sort(lineList.begin(), lineList.end());
}

int PgnContext::lineType(quint8 line) const
{
    return types.value(line);
}

bool PgnContext::isJ1939Type(int type)
{
    return type == 2 || type == 5 || type == 7;
}

bool PgnContext::isRawCanType(int type)
{
    return type == 4 || type == 6 || type == 7;
}

QString PgnContext::prefix(quint8 line) const
{
    return multi ? QStringLiteral("l%1_").arg(line) : QString();
}

QString PgnContext::suffix(quint8 line) const
{
    return multi ? QStringLiteral("_l%1").arg(line) : QString();
}

QString PgnContext::constText() const
{
    return dynamic ? QString() : QStringLiteral(" %1 ").arg(QLatin1String(language.constMacro));
}

QList<quint32> PgnContext::pgns(quint8 line, quint8 direction) const
{
    return database.getPGNs(line, direction, skipSafe);
}

QList<quint32> PgnContext::configuredPgns(quint8 line, quint8 direction) const
{
    QList<quint32> numbers = pgns(line, direction);
    if (direction == Direction::Transmit)
        numbers.removeAll(addressClaimPgn);
    return numbers;
}

quint32 PgnContext::sourceAddresses(quint8 line, quint8 direction, quint32 pgn) const
{
    return sourceCounts.value(lineDirectionKey(line, direction)).value(pgn);
}

qint64 PgnContext::number(const QString &text)
{
    return text.trimmed().toLongLong();
}

quint64 PgnContext::anyBase(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    const quint64 value = trimmed.toULongLong(&ok, 0);
    if (ok)
        return value;
    return quint64(trimmed.toLongLong(nullptr, 0));
}
