#include "indicationgeneratorbase.h"

#include "generation/commongeneratorhelperv4.h"
#include "generation/generatortext.h"
#include "store/objectdatabase.h"

#include <QTextStream>

IndicationGeneratorBase::IndicationGeneratorBase(const IndicationDialect &dialect, QObject *parent)
    : AbstractGenerator(parent)
    , dialect(dialect)
{}

QString IndicationGeneratorBase::outputFile() const
{
    return filePath(QStringLiteral("%1/gen_indication.h"));
}

QString IndicationGeneratorBase::generatorName() const
{
    return QStringLiteral("gen_indication.h");
}

QString IndicationGeneratorBase::functionName(const char *key) const
{
    return database->getGeneralSetting(QLatin1String(key)).trimmed();
}

void IndicationGeneratorBase::writeContent(QTextStream &out)
{
    QList<quint8> lines = database->getLines();
    lines.removeIf([](quint8 line) { return line >= 32; });
    const bool multi = lines.size() > 1 || forcedMultiLine;
    GeneratorText::writeFileHead(out, QLatin1String(dialect.title), projectName, toolVersion);
    out << "/* protect against multiple inclusion of the file */\n"
        << "#ifndef GEN_INDICATION\n"
        << "#define GEN_INDICATION 1\n\n";
    emit progress(25);
    const QString lineParameter = multi ? QLatin1String(dialect.lineParameter) : QString();
    writeFunctions(out, lineParameter);
    if (dialect.udsIndications &&
        database->getGeneralSetting(QStringLiteral("uds_static_indication")).toInt() == 1)
        writeUdsIndications(out, lineParameter);
    out << "\n"
        << "#endif /* GEN_INDICATION*/\n";
}

void IndicationGeneratorBase::writeFunctions(QTextStream &out, const QString &lineParameter)
{
    const bool anyBound = std::any_of(
        dialect.functions.cbegin(), dialect.functions.cend(),
        [this](const IndicationFunction &function) { return !functionName(function.key).isEmpty(); });
    if (!anyBound) {
        out << "/* \n"
            << "   There are not any static indication functions defined.\n"
            << "   If there were some, they would be declared here. \n"
            << " */\n";
        return;
    }
    // The USDO functions exist in the stack only where a line has the service enabled.
    bool usdoServer = false;
    bool usdoClient = false;
    const auto lines = database->getLines();
    for (const quint8 line : lines) {
        if (line >= 32)
            continue;
        usdoServer |=
            database->getLineGeneralSetting(QStringLiteral("usdo_server_enabled"), line).trimmed() ==
            QLatin1String("1");
        usdoClient |=
            database->getLineGeneralSetting(QStringLiteral("usdo_client_enabled"), line).trimmed() ==
            QLatin1String("1");
    }
    for (const auto &function : dialect.functions) {
        const QString key = QLatin1String(function.key);
        if ((key.startsWith(QLatin1String("usdo_server_")) && !usdoServer) ||
            (key.startsWith(QLatin1String("usdo_client_")) && !usdoClient))
            continue;
        const QString name = functionName(function.key);
        if (name.isEmpty())
            continue;
        out << function.returnType << ' ' << name << '(' << lineParameter << function.parameters;
    }
}

void IndicationGeneratorBase::writeUdsIndications(QTextStream &out, const QString &lineParameter)
{
    for (const auto &indication : CommonGeneratorHelperV4::udsIndicationTable()) {
        const QString name = functionName(indication.key);
        if (name.isEmpty())
            continue;
        out << "#if " << indication.guard << "\n"
            << indication.returnType << ' ' << name << '(' << lineParameter << indication.parameters << ");\n"
            << "#endif\n";
    }
}
