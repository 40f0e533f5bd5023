#include "generators/documents/xddgenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_edsfixture.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>
#include <QXmlStreamReader>

namespace {

using EdsFixture::device;
using EdsFixture::entry;

// Entries of every access and mapping, a name with a variable and one with a character that XML escapes.
void xddProject(ProjectBuilder &project)
{
    device(project);
    SUBINDEX_DATA_T gain = entry(QStringLiteral("Gain"), 3, QStringLiteral("rwr"), QStringLiteral("-3"));
    gain.pdomapping = PDOMapping(TPDO);
    SUBINDEX_DATA_T target =
        entry(QStringLiteral("Target"), 7, QStringLiteral("rww"), QStringLiteral("9"), false);
    target.pdomapping = PDOMapping(RPDO);
    EdsFixture::record(project, 0x2000, QStringLiteral("Settings"),
                       {entry(QStringLiteral("Highest sub-index supported"), 5, QStringLiteral("const"),
                              QStringLiteral("2")),
                        gain, target});
    SUBINDEX_DATA_T command = entry(QStringLiteral("Command"), 5, QStringLiteral("wo"), QStringLiteral("0"));
    command.pdomapping = PDOMapping(Allowed);
    project.object(0, 0x2001, QStringLiteral("Command"), 7, 5).sub(0, 0x2001, 0, command);
    project.object(0, 0x2002, QStringLiteral("Name $i"), 7, 9)
        .sub(0, 0x2002, 0, entry(QStringLiteral("Name $i"), 9, QStringLiteral("rw"), QStringLiteral("A&B")));
    project.var(0, 0xC000, QStringLiteral("Outside the object list"), 5, QStringLiteral("rw"),
                QStringLiteral("1"));
}

QString maskDates(const QString &text)
{
    static const QRegularExpression stamp(QStringLiteral("\\(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ\\)"));
    static const QRegularExpression creation(QStringLiteral("fileCreationDate=\"\\d\\d-\\d\\d-\\d\\d\""));
    return QString(text)
        .replace(stamp, QStringLiteral("(DATE)"))
        .replace(creation, QStringLiteral("fileCreationDate=\"*\""));
}

QString run(XDDGenerator &generator, ObjectDataBase &store, const QString &dir, quint8 line = 0)
{
    return EdsFixture::run(generator, store, dir, line);
}

} // namespace

class TestXddGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    }

    // Every file a test writes is well-formed XML for a reader of its own.
    void cleanupTestCase() { QCOMPARE(EdsFixture::takeFileProblems(), QStringList()); }

    void goldenFile()
    {
        ProjectBuilder builder;
        xddProject(builder);
        QTemporaryDir dir;
        XDDGenerator generator;
        const QString text = run(generator, builder.store(), dir.path());
        QCOMPARE(QFileInfo(generator.outputFile()).fileName(), QStringLiteral("000007f3_board.xdd"));
        QCOMPARE(maskDates(text), EdsFixture::golden(QStringLiteral("board.xdd")));
    }

    void wellFormedForOtherReaders()
    {
        ProjectBuilder builder;
        xddProject(builder);
        QTemporaryDir dir;
        XDDGenerator generator;
        const QString text = run(generator, builder.store(), dir.path());
        QXmlStreamReader reader(text);
        int objects = 0;
        while (!reader.atEnd()) {
            if (reader.readNext() == QXmlStreamReader::StartElement &&
                reader.name() == QLatin1String("CANopenFDDataObject"))
                ++objects;
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QCOMPARE(objects, 6);
        if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())
            QSKIP("xmllint is not installed");
        QProcess lint;
        lint.start(QStringLiteral("xmllint"), {QStringLiteral("--noout"), generator.outputFile()});
        QVERIFY(lint.waitForFinished());
        QCOMPARE(QString::fromUtf8(lint.readAllStandardError()), QString());
        QCOMPARE(lint.exitCode(), 0);
    }

    void fileNames_data()
    {
        QTest::addColumn<QString>("vendor");
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("expected");
        QTest::newRow("vendor in hexadecimal") << "0x7F3" << false << "000007f3_board.xdd";
        QTest::newRow("vendor in decimal") << "2035" << false << "000007f3_board.xdd";
        QTest::newRow("several lines") << "0x7F3" << true << "000007f3_board_0.xdd";
        QTest::newRow("no vendor") << "" << false << "00000000_board.xdd";
    }

    void fileNames()
    {
        QFETCH(QString, vendor);
        QFETCH(bool, multiLine);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        device(builder);
        builder.store().setSubIndexDefaultValue(0, 0x1018, 1, vendor);
        QTemporaryDir dir;
        XDDGenerator generator;
        generator.setMultiLine(multiLine);
        run(generator, builder.store(), dir.path());
        QCOMPARE(QFileInfo(generator.outputFile()).fileName(), expected);
        QVERIFY(QFileInfo::exists(dir.filePath(expected)));
        QCOMPARE(generator.objectName(), QStringLiteral("XDD file"));
    }

    void writableAsksForTheSingleLineName()
    {
        ProjectBuilder builder;
        device(builder);
        QTemporaryDir dir;
        XDDGenerator generator;
        generator.setOutputPath(dir.path());
        generator.setDatabase(&builder.store());
        generator.setProjectName(QStringLiteral("board"));
        generator.setMultiLine(true);
        QVERIFY(generator.isOutputWritable());
        const QString single = dir.filePath(QStringLiteral("000007f3_board.xdd"));
        QVERIFY(TestProjects::writeFile(single, "old"));
        QFile::setPermissions(single, QFile::ReadOwner);
        QVERIFY(!generator.isOutputWritable());
    }
};

QTEST_GUILESS_MAIN(TestXddGenerator)
#include "tst_xddgenerator.moc"
