#include "definehardwareblock.h"

#include "definecontext.h"

DefineHardwareBlock::DefineHardwareBlock(DefineContext &context)
    : context(context)
{}

void DefineHardwareBlock::write()
{
    const DefineProject &project = context.project;
    context.out.text(QStringLiteral("/* Hardware settings */\n"));
    const qint64 targets = project.generalNumber(QStringLiteral("targetsettings_cnt"), true);
    if (targets <= 1 && project.generalNumber(QStringLiteral("all_targets"), true) == 0)
        writeSingleTarget();
    else
        writeTargets();
    writeTimer(QStringLiteral("CO_SRDO_TIMER_INTERVAL"), project.general(QStringLiteral("co_srdo_interval")),
               false);
    context.out.text(QStringLiteral("\n"));
}

DefineHardwareBlock::Target DefineHardwareBlock::singleTarget() const
{
    const DefineProject &project = context.project;
    Target target;
    target.name = project.general(QStringLiteral("targetsettings_0_name"));
    target.id = project.general(QStringLiteral("target_id")).trimmed();
    if (target.id.isEmpty())
        target.id = QStringLiteral("TARGET_0");
    target.timer = project.general(QStringLiteral("co_timer_interval"));
    target.bigEndian = project.generalIsOne(QStringLiteral("endian"));
    target.filter = project.generalIsOne(QStringLiteral("drv_filter"));
    target.defines = project.general(QStringLiteral("hw_defines"));
    return target;
}

DefineHardwareBlock::Target DefineHardwareBlock::numberedTarget(qint64 number) const
{
    const DefineProject &project = context.project;
    auto key = [&](const char *setting) {
        return QStringLiteral("targetsettings_%1_%2").arg(number).arg(QLatin1String(setting));
    };
    Target target;
    target.name = project.general(key("name"));
    target.id = project.general(key("targetid")).trimmed();
    if (target.id.isEmpty())
        target.id = QStringLiteral("TARGET_%1").arg(number);
    target.timer = project.general(key("timer"));
    target.bigEndian = project.generalIsOne(key("endianess"));
    target.filter = project.generalIsOne(key("fullcan"));
    target.groupFilter = project.generalIsOne(key("groupfilter"));
    target.defines = project.general(key("defines"));
    return target;
}

void DefineHardwareBlock::writeSingleTarget()
{
    const Target only = singleTarget();
    const bool active = context.project.generalNumber(QStringLiteral("targetsettings_active"), true) == 0;
    writeSection(only, active, only.name + only.id);
}

void DefineHardwareBlock::writeTargets()
{
    const DefineProject &project = context.project;
    const qint64 count = project.generalNumber(QStringLiteral("targetsettings_cnt"), true);
    qint64 active = project.generalNumber(QStringLiteral("targetsettings_active"), true);
    if (project.generalNumber(QStringLiteral("all_targets"), true) != 0) {
        // The numbered targets; the project's first target keeps its settings in the plain keys
        // of the single-target form and has no section here.
        for (qint64 number = 1; number < count; ++number) {
            const Target each = numberedTarget(number);
            writeSection(each, number == active, each.name + ' ' + each.id);
        }
        return;
    }
    // Without an active target the first one is written, and made active, as projects of older
    // versions expect.
    if (active < 0 || active >= count)
        active = 0;
    const Target chosen = numberedTarget(active);
    writeSection(chosen, true, chosen.name + ' ' + chosen.id);
}

void DefineHardwareBlock::writeSection(const Target &target, bool active, const QString &title)
{
    DefineWriter &out = context.out;
    if (active)
        out.text(QStringLiteral("#define %1 1u\n").arg(target.id));
    out.text(QStringLiteral("#ifdef %1\n").arg(target.id));
    out.text(QStringLiteral("/* %1 */\n").arg(title));
    writeTimer(QStringLiteral("CORE_TIMER_INTERVAL"), target.timer, true);
    if (target.bigEndian)
        out.flag(QStringLiteral("CORE_BIG_ENDIAN"));
    if (target.filter)
        out.flag(QStringLiteral("CORE_DRV_FILTER"));
    if (target.groupFilter)
        out.flag(QStringLiteral("CORE_DRV_GROUP_FILTER"));
    if (!target.defines.isEmpty())
        out.text(QStringLiteral("\n/* target-specific defines */\n%1\n").arg(target.defines));
    out.text(QStringLiteral("#endif /* %1*/ \n\n").arg(target.id));
}

void DefineHardwareBlock::writeTimer(const QString &macro, const QString &value, bool zeroAsWritten)
{
    bool numeric = false;
    const qint64 interval = value.trimmed().toLongLong(&numeric, 0);
    if (value.isEmpty() || !numeric)
        return;
    context.out.define(macro, zeroAsWritten && interval == 0 ? value : QString::number(interval) + 'u');
}
