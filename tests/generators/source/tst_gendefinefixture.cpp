#include "tst_gendefinefixture.h"

#include "generators/source/codefinegenerator.h"
#include "generators/source/gendefinegenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include <memory>

namespace GenDefineFixture {

void array(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, quint16 dataType, int entries)
{
    p.object(line, index, name, 8, dataType);
    p.sub(line, index, 0, QStringLiteral("Number of entries"), 5, QStringLiteral("ro"),
          QString::number(entries));
    for (int entry = 1; entry <= entries; ++entry)
        p.sub(line, index, quint8(entry), QStringLiteral("Entry %1").arg(entry), dataType,
              QStringLiteral("rw"), QStringLiteral("0"));
}

void record(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, const QList<int> &subIndices)
{
    p.object(line, index, name, 9, 0);
    p.sub(line, index, 0, QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"),
          QString::number(subIndices.last()));
    for (const int subIndex : subIndices)
        p.sub(line, index, quint8(subIndex), QStringLiteral("Entry %1").arg(subIndex), 7,
              QStringLiteral("rw"), QStringLiteral("0"));
}

void mapping(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, int entries,
             const QString &access)
{
    p.object(line, index, name, 9, 0);
    p.sub(line, index, 0, QStringLiteral("Number of mapped objects"), 5, access, QString::number(entries));
    for (int entry = 1; entry <= entries; ++entry)
        p.sub(line, index, quint8(entry), QStringLiteral("Mapping %1").arg(entry), 7, access,
              QStringLiteral("0x20000010"));
}

SUBINDEX_DATA_T virtualSub(const QString &name, quint16 dataType)
{
    SUBINDEX_DATA_T data =
        ProjectBuilder::subRecord(name, dataType, QStringLiteral("rw"), QStringLiteral("0"));
    data.implementation = 3;
    return data;
}

Generated generate(ObjectDataBase &store, const QString &folder, const QString &project, bool older)
{
    bool hasCanopen = false;
    bool hasJ1939 = false;
    bool hasRawCan = false;
    const QList<quint8> lines = store.getLines();
    for (const quint8 line : lines) {
        const int type = store.getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt();
        hasCanopen = hasCanopen || type == 1 || type == 5 || type == 6;
        hasJ1939 = hasJ1939 || type == 2 || type == 5 || type == 7;
        hasRawCan = hasRawCan || type == 4 || type == 6 || type == 7;
    }
    std::unique_ptr<DefineGeneratorBase> generator;
    if (older)
        generator = std::make_unique<CoDefineGenerator>();
    else
        generator = std::make_unique<GenDefineGenerator>();
    generator->setOutputPath(folder);
    generator->setDatabase(&store);
    generator->setProjectName(project);
    generator->setLine(0);
    generator->setHasJ1939(hasJ1939);
    generator->setMultiProtocol(hasJ1939 ? hasCanopen || hasRawCan : hasRawCan);
    Generated generated;
    QObject::connect(generator.get(), &AbstractGenerator::progress, qApp,
                     [&generated](quint8 percent) { generated.progress << percent; });
    generator->start();
    generator->waitForFinished();
    generator->waitForThread();
    QCoreApplication::processEvents();
    generated.failed = generator->hasFailed();
    generated.path = generator->outputFile();
    const QString text = QString::fromUtf8(TestProjects::readFile(generated.path));
    // The older family writes the date in the user's format, "dd MM yyyy HH:mm:ss" unless set.
    static const QRegularExpression userDate(
        QStringLiteral("^ \\* \\d\\d \\d\\d \\d{4} \\d\\d:\\d\\d:\\d\\d$"),
        QRegularExpression::MultilineOption);
    generated.masked =
        older ? QString(text).replace(userDate, QStringLiteral(" * DATE")) : TestProjects::maskDate(text);
    return generated;
}

Generated generateReopened(ProjectBuilder &builder, const QStringList &statements, const QString &folder,
                           const QString &project, bool older)
{
    const QString file = QDir(folder).filePath(QStringLiteral("reopened.kprj"));
    if (!builder.save(file) || !TestProjects::execSql(file, statements))
        return Generated();
    ObjectDataBase store;
    if (!store.openDataBase(file))
        return Generated();
    return generate(store, folder, project, older);
}

QString goldenPath(const QString &name)
{
    return QStringLiteral(KESTREL_DEFINE_GOLDEN_DIR "/") + name;
}

QString preprocessorMessages(const QString &path)
{
    QProcess compiler;
    compiler.start(QStringLiteral("cc"), {QStringLiteral("-E"), QStringLiteral("-Werror"), path,
                                          QStringLiteral("-o"), QStringLiteral("/dev/null")});
    if (!compiler.waitForFinished(60000))
        return QStringLiteral("cc did not finish");
    const QString messages = QString::fromLocal8Bit(compiler.readAllStandardError());
    if (compiler.exitStatus() != QProcess::NormalExit || compiler.exitCode() != 0)
        return messages.isEmpty() ? QStringLiteral("cc failed") : messages;
    return messages;
}

bool preprocesses(const QString &path)
{
    const QString messages = preprocessorMessages(path);
    if (!messages.isEmpty())
        qWarning().noquote() << messages;
    return messages.isEmpty();
}

QStringList defineLines(const QString &text)
{
    QStringList defines;
    const QStringList lines = text.split('\n');
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("#define ")))
            defines << line;
    }
    return defines;
}

ApplicationName::ApplicationName(const QString &name)
    : previous(QCoreApplication::applicationName())
{
    QCoreApplication::setApplicationName(name);
}

ApplicationName::~ApplicationName()
{
    QCoreApplication::setApplicationName(previous);
}

} // namespace GenDefineFixture
