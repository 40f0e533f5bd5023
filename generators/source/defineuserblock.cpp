#include "defineuserblock.h"

#include "definecontext.h"

#include <QStringList>

DefineUserBlock::DefineUserBlock(DefineContext &context)
    : context(context)
{}

void DefineUserBlock::write()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const QString userDefines = project.general(QStringLiteral("user_defines"));
    if (userDefines.size() > 1)
        out.text(QStringLiteral("/* application-specific defines as defined in Kestrel */\n%1\n"
                                "/* end of application-specific defines */\n\n")
                     .arg(userDefines));
    if (project.generalIsOne(QStringLiteral("generate_generation_counter")))
        out.define(QStringLiteral("GEN_GENERATION_COUNT"),
                   QStringLiteral("%1ul").arg(qint64(context.state.generationCount) + 1));
    // One entry per line; any line that overwrites the predefined connection set counts.
    const QStringList overwrite = project.general(QStringLiteral("overwrite_predef")).split(',');
    for (const QString &entry : overwrite) {
        if (DefineProject::number(entry) != 0) {
            out.flag(QStringLiteral("GEN_OVERWRITE_PREDEF_CONN_SET"));
            break;
        }
    }
}
