#include "objdictheadwriter.h"

#include "objdictcontext.h"
#include "objdictdialect.h"

#include "generation/generatortext.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

ObjDictHeadWriter::ObjDictHeadWriter(const ObjDictContext &context)
    : context(context)
{}

void ObjDictHeadWriter::write(QTextStream &out) const
{
    out << "/*\n"
        << QString::fromLatin1(context.dialect.objDictTitle)
               .arg(context.projectName, QCoreApplication::applicationName(), context.toolVersion)
        << " * " << GeneratorText::currentDate() << "\n */\n";
    writeIncludes(out);
    out << "\n";
    writePrototypes(out);
    if (QCoreApplication::applicationName() == QLatin1String("EnergyBus Kestrel Wizard"))
        out << "/* EnergyBus header files */\n#include <eb_energybus.h>\n\n";
    writeApplicationHeaders(out);
    writeMemorySpecifiers(out);
    writeStaticIndications(out);
    writeCounts(out);
}

bool ObjDictHeadWriter::udsOn() const
{
    return context.model.number(QStringLiteral("udsserver_supported")) == 1 ||
           context.model.number(QStringLiteral("udsclient_supported")) == 1;
}

void ObjDictHeadWriter::writeIncludes(QTextStream &out) const
{
    if (!QFile::exists(context.outputPath + QStringLiteral("/no_stdlib_include.txt")))
        out << "#include <stdlib.h>\n\n";
    out << "#include <gen_define.h>\n";
    const QString isotp = QStringLiteral("#include <%1>\n#include <uds_uds.h>\n")
                              .arg(QLatin1String(context.dialect.isotpInclude));
    if (context.camMode) {
        const bool coreHeaders =
            !context.dialect.olderMacros ||
            context.model.setting(QStringLiteral("use_core_headers")) == QLatin1String("1");
        out << (coreHeaders ? "#include <core_datatype.h>\n" : "#include <co_datatype.h>\n");
        out << "#include <co_odaccess.h>\n#include <j1939_cam11_cam21.h>\n";
        if (udsOn())
            out << isotp;
    } else {
        out << "#include <co_canopen.h>\n";
        if (udsOn())
            out << isotp;
        out << "#include <gen_indication.h>\n";
    }
    if (context.model.number(QStringLiteral("generate_string_defaults")) >= 1)
        out << "#include <gen_user.h>\n";
}

void ObjDictHeadWriter::writePrototypes(QTextStream &out) const
{
    if (!context.multiLineForm() || context.camMode)
        return;
    out << "/* these functions may be used by the application to initialize only a sub set of all lines.*/\n";
    if (context.dialect.commonPrototypes)
        out << "RET_T coCanOpenStackInit_common(CO_EVENT_STORE_T pLoadFunction);\n";
    for (const quint8 line : context.objectLines) {
        if (context.canFd)
            out << QStringLiteral(
                       "RET_T coCanOpenStackInit_line%1(UNSIGNED8 canLine, CO_INIT_OPTION_T *pCoOptions, "
                       "BOOL_T *pModes);")
                       .arg(line);
        else
            out << QStringLiteral(
                       "RET_T coCanOpenStackInit_line%1(UNSIGNED8 canLine, CO_INIT_OPTION_T *pCoOptions);")
                       .arg(line);
        out << "\n";
    }
    if (context.dialect.commonPrototypes)
        out << "RET_T coCanOpenStackInit_line(UNSIGNED8 canLine, CO_INIT_OPTION_T *pCoOptions);\n";
    out << "RET_T coCanOpenStackInit_finish(void);\n\n";
}

void ObjDictHeadWriter::writeApplicationHeaders(QTextStream &out) const
{
    const QString key = QStringLiteral("applicationheader");
    if (!context.model.settingExists(key))
        return;
    const QStringList names =
        context.model.setting(key).trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (names.isEmpty())
        return;
    out << "/* application header file(s) */\n";
    for (const QString &name : names)
        out << "#include \"" << name << "\"\n";
    out << "\n";
}

void ObjDictHeadWriter::writeMemorySpecifiers(QTextStream &out) const
{
    out << "/* definition of memory specifier */\n"
           "#ifndef CORE_CONST\n"
           "#define CORE_CONST const\n"
           "#endif\n\n"
           "/* definition of compiler-specific storage classes */\n"
           "#ifndef CORE_STORAGE_CLASS\n"
           "#define CORE_STORAGE_CLASS\n"
           "#endif\n"
           "#ifndef CORE_CONST_STORAGE_CLASS\n"
           "#define CORE_CONST_STORAGE_CLASS\n"
           "#endif\n\n"
           "/* definition of watchdog handle during initialization */\n"
           "#ifndef CORE_HANDLE_WATCHDOG\n"
           "#define CORE_HANDLE_WATCHDOG\n"
           "#endif /* CORE_HANDLE_WATCHDOG */\n\n"
           "\n";
}

void ObjDictHeadWriter::writeStaticIndications(QTextStream &out) const
{
    const ObjDictModel &model = context.model;
    auto writeRows = [&](const QList<ObjDictIndication> &rows) {
        for (const auto &row : rows) {
            const QString value = model.setting(QString::fromLatin1(row.key)).trimmed();
            if (!value.isEmpty())
                out << row.text << " " << value << ";\n";
        }
    };
    out << "/* definition of static indication function pointers */\n";
    writeRows(context.dialect.indications);
    bool server = false;
    bool client = false;
    for (const quint8 line : model.lines()) {
        const qint64 type = model.number(QStringLiteral("line%1type").arg(line));
        if (type != 1 && type != 5)
            continue;
        server =
            server || model.lineSetting(QStringLiteral("usdo_server_enabled"), line) == QLatin1String("1");
        client =
            client || model.lineSetting(QStringLiteral("usdo_client_enabled"), line) == QLatin1String("1");
    }
    if (server)
        writeRows(context.dialect.usdoServerIndications);
    if (client)
        writeRows(context.dialect.usdoClientIndications);
}

void ObjDictHeadWriter::writeCounts(QTextStream &out) const
{
    int assignCount = 0;
    int descriptionCount = 0;
    for (const quint8 line : context.tableLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            const quint8 start = context.compactStart(line, object.key());
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd() && sub.key() <= start;
                 ++sub) {
                if (sub->implementation == 3)
                    continue;
                ++descriptionCount;
                if (sub.key() == 0)
                    ++assignCount;
            }
        }
    }
    out << "\n/* number of objects */\n"
        << "#define CO_OD_ASSIGN_CNT " << assignCount << "u\n"
        << "#define CO_OBJ_DESC_CNT " << descriptionCount << "u\n";
}

void ObjDictHeadWriter::updateUserHeader() const
{
    updateUserHeader(context, context.model.number(QStringLiteral("generate_string_defaults")) >= 1, false);
}

void ObjDictHeadWriter::updateUserHeader(const ObjDictContext &context, bool wanted, bool separated)
{
    const QString path = context.outputPath + QStringLiteral("/gen_user.h");
    if (!wanted) {
        QFile::remove(path);
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate))
        return;
    QTextStream out(&file);
    out << "/*\n"
        << QStringLiteral(" * gen_user.h for %1 - generated by %2 %3\n")
               .arg(context.projectName, QCoreApplication::applicationName(), context.toolVersion)
        << " * " << GeneratorText::currentDate() << "\n */\n\n"
        << "/* protect against multiple inclusion of the file */\n"
           "#ifndef GEN_USER_H\n"
           "#define GEN_USER_H 1\n\n"
           "#include <gen_define.h>\n"
           "#include <co_canopen.h>\n"
        << (separated ? "\n" : "")
        << "/* prototype for function to overwrite predefined connection set */\n"
           "RET_T userOverwriteCobIdSettings(void);\n";
    if (context.multiLineForm())
        out << "RET_T userOverwriteCobIdSettingsLine(UNSIGNED8 canLine);\n";
    out << "\n"
           "/* prototype for function to set default values of strings */\n"
           "RET_T userOverwriteStringDefaultvalues(void);\n"
           "\n#endif /* GEN_USER */\n";
}
