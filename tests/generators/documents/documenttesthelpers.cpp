#include "documenttesthelpers.h"

#include "generation/abstractgenerator.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>

namespace DocumentTests {

void setUpApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("KestrelTests"));
    QCoreApplication::setApplicationName(QStringLiteral("J1939 Kestrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    QCoreApplication::instance()->setProperty("AppNameWithVersion", QStringLiteral("J1939 Kestrel 4.3.2"));
}

void setImplInfo(bool on)
{
    QSettings settings(QCoreApplication::organizationName(),
                       QCoreApplication::instance()->property("AppNameWithVersion").toString());
    settings.setValue(QStringLiteral("General/implinfo"), on ? 1 : 0);
    settings.sync();
}

bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &folder,
         const RunOptions &options)
{
    generator.setMultiLine(options.multiLine);
    if (!options.fileSuffix.isEmpty())
        generator.setFileSuffix(options.fileSuffix);
    if (generator.setOutputPath(folder) != GeneratorStatus::Ok ||
        generator.setDatabase(&store) != GeneratorStatus::Ok ||
        generator.setProjectName(options.projectName) != GeneratorStatus::Ok ||
        generator.setLine(options.line) != GeneratorStatus::Ok || !generator.isOutputWritable())
        return false;
    if (generator.start() != GeneratorStatus::Ok)
        return false;
    generator.waitForFinished();
    generator.waitForThread();
    QCoreApplication::processEvents();
    return !generator.isRunning();
}

QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

QString golden(const QString &name)
{
    return readText(QStringLiteral(KESTREL_DOCUMENT_GOLDEN_DIR "/") + name);
}

QString maskTextDates(const QString &text)
{
    static const QRegularExpression date(
        QStringLiteral("\\b\\w{3} \\w{3} {1,2}\\d{1,2} \\d\\d:\\d\\d:\\d\\d \\d{4}\\b"));
    QString masked = text;
    return masked.replace(date, QStringLiteral("DATE"));
}

QStringList lines(const QString &text)
{
    return text.split(QLatin1Char('\n'));
}

} // namespace DocumentTests
