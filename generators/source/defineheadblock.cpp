#include "defineheadblock.h"

#include "definecontext.h"
#include "definefamily.h"
#include "generation/commongeneratorhelper.h"

#include <QCoreApplication>
#include <QStringList>

DefineHeadBlock::DefineHeadBlock(DefineContext &context)
    : context(context)
{}

void DefineHeadBlock::write(const QString &toolVersion)
{
    context.out.text(QStringLiteral("/* protect against multiple inclusion of the file */\n"
                                    "#ifndef GEN_DEFINE_H\n"
                                    "#define GEN_DEFINE_H 1\n\n"));
    writeToolBlock(toolVersion);
    writeVersionBlock();
}

void DefineHeadBlock::writeToolBlock(const QString &toolVersion)
{
    const QStringList parts = toolVersion.split('.');
    auto part = [&](int i) { return QStringLiteral("%1").arg(parts.value(i).toUInt(), 2, 10, QChar('0')); };
    DefineWriter &out = context.out;
    out.text(QStringLiteral("/* some information about the tool that has generated this file */\n"));
    out.define(QStringLiteral("GEN_TOOL_NAME"),
               QCoreApplication::applicationName().toUpper().replace(' ', '_'));
    out.define(QStringLiteral("GEN_TOOL_VERSION"),
               QStringLiteral("0x%1%2%3ul").arg(part(0), part(1), part(2)));
}

void DefineHeadBlock::writeVersionBlock()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    // The header states the versions of the older stack's structures, which the current stack reads too.
    const CommonGeneratorHelper versions(&project.store());
    auto writeVersion = [&](const char *macro, quint8 module) {
        out.define(QLatin1String(macro), QStringLiteral("%1u").arg(versions.initStructVersion(module)),
                   QStringLiteral(" \t"));
    };
    out.text(QStringLiteral("/* init struct versions */\n"));
    writeVersion("GEN_COMMON_INIT_STRUCT_VERSION", CommonGeneratorHelperBase::CommonModule);
    if (project.generalNumber(QStringLiteral("udsserver_supported")) > 0 ||
        project.generalNumber(QStringLiteral("udsclient_supported")) > 0)
        writeVersion("GEN_UDS_INIT_STRUCT_VERSION", CommonGeneratorHelperBase::UdsModule);
    if (project.anyLine(DefineProject::isCanopenType))
        writeVersion("GEN_CANOPEN_INIT_STRUCT_VERSION", CommonGeneratorHelperBase::CANopenModule);
    if (project.anyLine(DefineProject::isJ1939Type))
        writeVersion("GEN_J1939_INIT_STRUCT_VERSION", CommonGeneratorHelperBase::J1939Module);
    const bool bootloader = context.family().readsBootloaderSettings &&
                            project.general(QStringLiteral("uds_bl_setting")) == QLatin1String("1");
    if (project.anyLine(DefineProject::isRawCanType) && !bootloader)
        writeVersion("GEN_RAWCAN_INIT_STRUCT_VERSION", CommonGeneratorHelperBase::RawCanModule);
    out.text(QStringLiteral("\n"));
}
