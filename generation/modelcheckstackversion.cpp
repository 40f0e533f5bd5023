#include "modelcheckstackversion.h"

#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "generation/versionreader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

void ModelCheckStackVersion::check(const QString &stackPath, const QString &projectDirectory,
                                   ModelCheckOutput &output)
{
    if (stackPath.isEmpty()) {
        output.message(
            ModelChecker::tr("Info: Path to protocol stack not specified. Cannot check if generated code "
                             "fits to installed stack/framework."));
        output.message(ModelChecker::tr("Specify path to protocol stack at Options -> Settings."));
        return;
    }
    QString folder = QDir(projectDirectory).absoluteFilePath(stackPath);
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    folder = canonical.isEmpty() ? QDir::cleanPath(folder) : canonical;

    const QDir stack(folder);
    const QStringList files =
        stack.entryList({QStringLiteral("*_featureinfo_*.xml")}, QDir::Files, QDir::Name);
    if (files.isEmpty()) {
        output.message(
            ModelChecker::tr("Info: No *_featureinfo_*.xml file found in protocol stack folder %1. Cannot "
                             "check if generated code fits to installed stack/framework.")
                .arg(folder));
        return;
    }
    const QString toolVersion = comparedVersion(QCoreApplication::applicationVersion());
    for (const auto &file : files) {
        const QString required = VersionReader(stack.filePath(file)).requiredToolVersion().trimmed();
        if (required == toolVersion)
            continue;
        if (required == QLatin1String("0.0"))
            output.error(ModelChecker::tr(
                "<strong><font color='red'>Error: </font></strong>Version of installed stack "
                "does not fit. It requires an older version of the tool. Cannot generate "
                "files."));
        else
            output.error(ModelChecker::tr(
                             "<strong><font color='red'>Error: </font></strong>Version of installed stack "
                             "does not fit. It requires tool version %1. Cannot generate files. This is "
                             "version %2.")
                             .arg(required, toolVersion));
        return;
    }
}

QString ModelCheckStackVersion::comparedVersion(const QString &applicationVersion)
{
    const qsizetype dots = applicationVersion.count(QLatin1Char('.'));
    const qsizetype lastDot = applicationVersion.lastIndexOf(QLatin1Char('.'));
    if (dots == 2)
        return applicationVersion.left(lastDot);
    if (dots == 3)
        return applicationVersion.left(qMax<qsizetype>(0, lastDot - 2));
    return applicationVersion;
}
