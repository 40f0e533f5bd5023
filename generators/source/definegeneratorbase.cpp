#include "definegeneratorbase.h"

#include "definecanopenblock.h"
#include "definecobblock.h"
#include "definecommonblock.h"
#include "definecontext.h"
#include "defineenergybusblock.h"
#include "defineeventblock.h"
#include "definefamily.h"
#include "definehardwareblock.h"
#include "defineheadblock.h"
#include "defineisotpblock.h"
#include "definej1939block.h"
#include "definerawcanblock.h"
#include "defineuserblock.h"
#include "definevirtualblock.h"
#include "generation/generatortext.h"
#include "generation/usersection.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QSettings>
#include <QTextStream>

namespace {

// The device types from here on are CiA profiles.
constexpr qint64 firstProfile = 401;
constexpr quint8 lastLine = 31;

} // namespace

QString DefineGeneratorBase::outputFile() const
{
    return filePath(QStringLiteral("%1/gen_define.h"));
}

QString DefineGeneratorBase::generatorName() const
{
    return QStringLiteral("gen_define.h");
}

void DefineGeneratorBase::prepare()
{
    state = DefineState();
    state.hasJ1939 = hasJ1939;
    state.multiProtocol = multiProtocol;
    state.forcedMultiLine = forcedMultiLine;
    userSectionText = UserSection::read(outputFile());
    state.generationCount = readGenerationCount(outputFile());
    if (database)
        readDevice();
}

void DefineGeneratorBase::readDevice()
{
    DefineProject project(*database);
    state.canFd = project.generalNumber(QStringLiteral("canfd_supported")) > 0;
    for (quint8 each = 0; each <= lastLine; ++each) {
        if (!database->lineExists(each))
            continue;
        ++state.lineCount;
        if (!state.profileSeen && project.defaultNumber(each, 0x1000, state.canFd ? 1 : 0) >= firstProfile)
            state.profileSeen = true;
    }
}

qint32 DefineGeneratorBase::readGenerationCount(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString text = in.readLine();
        if (!text.contains(QLatin1String("GEN_GENERATION_COUNT")))
            continue;
        // "#define GEN_GENERATION_COUNT\t<n>ul"
        QString value = text.split('\t').last();
        value.chop(2);
        return qint32(DefineProject::number(value, true));
    }
    return 0;
}

QString DefineGeneratorBase::headDate() const
{
    if (!family().userDateFormat)
        return GeneratorText::currentDate();
    QSettings settings(QCoreApplication::organizationName(),
                       QCoreApplication::instance()->property("AppNameWithVersion").toString());
    settings.beginGroup(QStringLiteral("General"));
    const QString format =
        settings.value(QStringLiteral("date_time_format"), QStringLiteral("dd MM yyyy HH:mm:ss")).toString();
    return QDateTime::currentDateTime().toString(format);
}

void DefineGeneratorBase::writeContent(QTextStream &stream)
{
    if (!database) {
        fail(tr("No project to write gen_define.h for."));
        return;
    }
    DefineProject project(*database);
    DefineWriter out(stream, family());
    DefineContext context{project, out, state};
    GeneratorText::writeFileHead(stream, family().titleTemplate, projectName, toolVersion, headDate());
    DefineHeadBlock(context).write(toolVersion);
    emit progress(25);
    if (!hasJ1939 || multiProtocol) {
        if (!DefineContext::rawCanEdition() || project.anyLine(DefineProject::isCanopenType))
            DefineCanopenBlock(context).write();
        emit progress(50);
        if (DefineContext::energyBusEdition())
            DefineEnergyBusBlock(context).write();
        DefineEventBlock(context).write();
        emit progress(75);
    }
    DefineCommonBlock(context).write();
    if (hasJ1939 || multiProtocol)
        DefineJ1939Block(context).write();
    const bool bootloader = family().readsBootloaderSettings &&
                            project.general(QStringLiteral("uds_bl_setting")) == QLatin1String("1");
    if (!bootloader) {
        DefineRawCanBlock(context).write();
    } else if (!state.bufferCountsWritten) {
        out.define(QStringLiteral("CORE_REC_BUFFER_COUNTS"),
                   project.bufferList(QStringLiteral("receivebuffersize"), QStringLiteral("10")));
        out.define(QStringLiteral("CORE_TR_BUFFER_COUNTS"),
                   project.bufferList(QStringLiteral("transmitbuffersize"), QStringLiteral("5")));
        state.bufferCountsWritten = true;
    }
    DefineIsoTpBlock(context).write();
    DefineVirtualBlock(context).write();
    DefineHardwareBlock(context).write();
    DefineUserBlock(context).write();
    if (multiProtocol)
        DefineCobBlock(context).write();
    UserSection::write(stream, userSectionText);
    stream << "\n#endif /* GEN_DEFINE_H */\n";
}
