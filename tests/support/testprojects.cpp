#include "testprojects.h"

#include <QCoreApplication>

#include <QAtomicInt>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace TestProjects {

namespace {

QAtomicInt connectionCounter;

template<typename Work>
bool withConnection(const QString &path, Work work)
{
    const QString name = QStringLiteral("testprojects%1").arg(connectionCounter.fetchAndAddOrdered(1));
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        if (db.open()) {
            ok = work(db);
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

QStringList schemaStatements()
{
    const QString text =
        QString::fromUtf8(readFile(QStringLiteral(KESTREL_TEST_DATA_DIR "/schema107.sql")));
    QStringList statements;
    const auto lines = text.split('\n');
    for (const auto &line : lines) {
        if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1String("--")))
            statements << line;
    }
    return statements;
}

} // namespace

bool execSql(const QString &path, const QStringList &statements)
{
    return withConnection(path, [&](QSqlDatabase &db) {
        QSqlQuery query(db);
        for (const auto &statement : statements) {
            if (!query.exec(statement)) {
                qWarning() << "test SQL failed:" << statement << query.lastError().text();
                return false;
            }
        }
        return true;
    });
}

QStringList querySql(const QString &path, const QString &statement)
{
    QStringList rows;
    withConnection(path, [&](QSqlDatabase &db) {
        QSqlQuery query(db);
        if (!query.exec(statement))
            return false;
        while (query.next())
            rows << query.value(0).toString();
        return true;
    });
    return rows;
}

bool createProject(const QString &path, const QStringList &statements)
{
    QFile::remove(path);
    return execSql(path, schemaStatements() + statements);
}

QString program(const QString &name)
{
    return qEnvironmentVariable("KESTREL_BIN_DIR") + '/' + name;
}

RunResult runProgram(const QString &name, const QStringList &arguments, const QString &workingDirectory,
                     int timeoutMs)
{
    QProcess process;
    process.setWorkingDirectory(workingDirectory);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KESTREL_NONINTERACTIVE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.start(program(name), arguments);
    RunResult result;
    result.finished = process.waitForFinished(timeoutMs);
    if (!result.finished) {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.standardError = process.readAllStandardError();
    return result;
}

bool allowFailingModelCheck()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/vorlan/");
    for (const char *edition : {"J1939 Kestrel", "CANopen Kestrel", "CAN Kestrel", "EnergyBus Kestrel Wizard"}) {
        QSettings settings(folder + QLatin1String(edition) + QStringLiteral(" 4.3.2.conf"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("General/disablecheck"), true);
        settings.sync();
        if (settings.status() != QSettings::NoError)
            return false;
    }
    return true;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

QString maskDate(const QString &text)
{
    static const QRegularExpression dateLine(
        QStringLiteral("^ \\* \\w{3} \\w{3} [ \\d]?\\d \\d\\d:\\d\\d:\\d\\d \\d{4}$"), QRegularExpression::MultilineOption);
    QString masked = text;
    masked.replace(dateLine, QStringLiteral(" * DATE"));
    return masked;
}

QString readExpected(const QString &path, const QString &actual)
{
    if (qEnvironmentVariableIsSet("KESTREL_UPDATE_GOLDEN"))
        writeFile(path, actual.toUtf8());
    return QString::fromUtf8(readFile(path));
}

void setGeneratorApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
}

QString readGenerated(const QString &path)
{
    return maskDate(QString::fromUtf8(readFile(path)));
}

} // namespace TestProjects
