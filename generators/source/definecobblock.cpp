#include "definecobblock.h"

#include "definecobcounter.h"
#include "definecontext.h"
#include "store/objectdatabase.h"
#include "store/protocolrecords.h"

#include <QStringList>

DefineCobBlock::DefineCobBlock(DefineContext &context)
    : context(context)
{}

void DefineCobBlock::write()
{
    DefineWriter &out = context.out;
    QStringList counts;
    qint64 sum = 0;
    for (const quint8 line : context.project.lines()) {
        const int count = lineCount(line);
        counts << QString::number(count);
        sum += count;
    }
    out.text(QStringLiteral("/* COB Definitions */\n"));
    out.define(QStringLiteral("CORE_COB_COUNTS"), counts.join(QLatin1String(", ")), QStringLiteral(" "));
    out.define(QStringLiteral("CORE_COB_CNT"), QString::number(sum), QStringLiteral(" \t"));
}

int DefineCobBlock::lineCount(quint8 line) const
{
    const DefineProject &project = context.project;
    const DefineCobCounter counter(context);
    const qint64 additional = project.generalNumber(QStringLiteral("additional_cob_count"));
    int count = counter.isoTpTerm(line) + counter.udsTerm(line, true) + int(additional > 0 ? additional : 0);
    const int type = project.lineType(line);
    if (DefineProject::isCanopenType(type))
        count += counter.canopenCount(line);
    if (DefineProject::isJ1939Type(type))
        count += counter.j1939Count(line);
    if (DefineProject::isRawCanType(type)) {
        ObjectDataBase &store = project.store();
        count += int(store.getCANIDs(line, Direction::Transmit).size() +
                     store.getCANIDs(line, Direction::Receive).size());
    }
    return count;
}
