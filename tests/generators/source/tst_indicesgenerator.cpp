#include "generators/source/indicesgenerator.h"
#include "generatorrun.h"
#include "headerprojects.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// The defines between the include guard and the closing entry count.
QString body(const QString &file)
{
    const QString start = QStringLiteral("#define GEN_INDICES_H 1\n\n");
    const QString end = QStringLiteral("#define  S_NUMBER_OF_ENTRIES");
    const qsizetype from = file.indexOf(start);
    const qsizetype to = file.indexOf(end);
    if (from < 0 || to < 0)
        return QStringLiteral("<no gen_indices.h frame>\n") + file;
    return file.mid(from + start.size(), to - from - start.size());
}

QString generate(ProjectBuilder &project, const QList<quint8> &lines, bool multiLine,
                 const QString &projectName = QStringLiteral("P"))
{
    QTemporaryDir dir;
    IndicesGenerator generator;
    generator.setLines(lines);
    generator.setMultiLine(multiLine);
    if (!GeneratorRun::run(generator, project.store(), dir.path(), projectName, true))
        return QStringLiteral("<generator did not finish>");
    return TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_indices.h")));
}

} // namespace

class TestIndicesGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestProjects::setGeneratorApplication(); }

    void golden_data()
    {
        QTest::addColumn<QString>("project");
        for (const auto &project : HeaderProjects::projects())
            QTest::newRow(project.name) << QString::fromLatin1(project.name);
    }

    // The driver sets the multi-line form for this generator and hands it the lines of the run.
    void golden()
    {
        QFETCH(QString, project);
        ProjectBuilder builder;
        HeaderProjects::find(project)->build(builder);
        const QString actual = generate(builder, builder.store().getLines(), true, project);
        const QString expected = TestProjects::readExpected(
            HeaderProjects::goldenFolder(project) + QStringLiteral("/gen_indices.h"), actual);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(actual.split('\n'), expected.split('\n'));
    }

    void naming_data()
    {
        QTest::addColumn<int>("lineType");
        QTest::addColumn<QStringList>("objects");
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("misc");
        QTest::addColumn<QString>("defines");

        QTest::newRow("single-line form has no line prefix")
            << 1 << QStringList{QStringLiteral("0x2000=Speed (rpm)")} << false << QString()
            << QStringLiteral("#define I_SPEED_RPM              \t0x2000u\n");
        QTest::newRow("generateML true forces the line prefix")
            << 1 << QStringList{QStringLiteral("0x2000=Speed")} << false << QStringLiteral("true")
            << QStringLiteral("#define L0_I_SPEED               \t0x2000u\n");
        QTest::newRow("generateML True does not")
            << 1 << QStringList{QStringLiteral("0x2000=Speed")} << false << QStringLiteral("True")
            << QStringLiteral("#define I_SPEED                  \t0x2000u\n");
        QTest::newRow("a hyphen and a blank give one name, the second numbered")
            << 1
            << QStringList{QStringLiteral("0x2000=Flow rate"), QStringLiteral("0x2001=Flow-rate"),
                           QStringLiteral("0x2002=Flow  rate")}
            << false << QString()
            << QStringLiteral("#define I_FLOW_RATE              \t0x2000u\n"
                              "#define I_FLOW_RATE1             \t0x2001u\n"
                              "#define I_FLOW_RATE2             \t0x2002u\n");
        QTest::newRow("variables in the name")
            << 1 << QStringList{QStringLiteral("0x2010=Output {$i - 0x2000}")} << false << QString()
            << QStringLiteral("#define I_OUTPUT_16              \t0x2010u\n");
        QTest::newRow("special characters alone clean down to the prefix")
            << 1 << QStringList{QStringLiteral("0x2000=%&/"), QStringLiteral("0x2001=?")} << false
            << QString()
            << QStringLiteral("#define I                        \t0x2000u\n"
                              "#define I1                       \t0x2001u\n");
        QTest::newRow("a mirrored TPDO name outside the TPDO range has no alias")
            << 1 << QStringList{QStringLiteral("0x1400=TPDO comm par 1 for node 2 out")} << false << QString()
            << QStringLiteral("#define I_TPDO_COMM_PAR_1_FOR_NODE_2_OUT\t0x1400u\n");
        QTest::newRow("a mirrored TPDO in the single-line form")
            << 1 << QStringList{QStringLiteral("0x19ff=TPDO comm par 12 for node 127 out_1")} << false
            << QString()
            << QStringLiteral("#define I_TPDO_COMM_PAR_12_FOR_NODE_127_OUT_1\t0x19ffu\n"
                              "#define TPDO_127_OUT_1_12        \t512u\n");
        QTest::newRow("line type 7 gets no address claim")
            << 7 << QStringList{} << false << QString() << QString();
    }

    void naming()
    {
        QFETCH(int, lineType);
        QFETCH(QStringList, objects);
        QFETCH(bool, multiLine);
        QFETCH(QString, misc);
        QFETCH(QString, defines);
        ProjectBuilder project;
        project.line(0, lineType);
        for (const QString &entry : objects) {
            const qsizetype equals = entry.indexOf('=');
            project.var(0, quint16(entry.left(equals).toUInt(nullptr, 16)), entry.mid(equals + 1), 7,
                        QStringLiteral("ro"), QStringLiteral("0"));
        }
        if (!misc.isEmpty())
            project.misc(QStringLiteral("generateML"), misc);
        QCOMPARE(body(generate(project, {0}, multiLine)), defines);
    }

    void userDefinesKeepTheirCharacters()
    {
        ProjectBuilder project;
        project.line(0, 1);
        INDEX_DATA_T object;
        object.name = QStringLiteral("Record");
        object.objecttype = 9;
        object.metadata.insert(QStringLiteral("objectdefine"), QStringLiteral("my.record define"));
        project.object(0, 0x1600, object);
        for (quint8 sub = 1; sub <= 3; ++sub) {
            SUBINDEX_DATA_T data = ProjectBuilder::subRecord(QStringLiteral("Entry"), 7, QStringLiteral("ro"),
                                                             QStringLiteral("0"));
            if (sub == 3)
                data.metadata.insert(QStringLiteral("subdefine"), QStringLiteral("last.entry"));
            project.sub(0, 0x1600, sub, data);
        }
        // Below 0x2000 a repeated sub-index name has no define of its own; the sub-index define is cleaned.
        QCOMPARE(body(generate(project, {0}, false)),
                 QStringLiteral("#define MY.RECORD_DEFINE         \t0x1600u\n"
                                "#define  S_ENTRY                  \t0x1u\n"
                                "#define  S_LAST_ENTRY             \t0x3u\n"));
    }

    void addressClaimOnlyWithoutTheTransmitGroup()
    {
        ProjectBuilder project;
        project.line(0, 5);
        project.pgn(0, 60928, Direction::Transmit, QStringLiteral("Address Claiming"));
        QCOMPARE(body(generate(project, {0}, false)),
                 QStringLiteral("#define PGN_ADDRESS_CLAIMING     \t60928u /* 0xee00 */\n\n"));
    }

    void noLinesGiveTheFrameAlone()
    {
        ProjectBuilder project;
        project.line(0, 1);
        project.var(0, 0x2000, QStringLiteral("Speed"), 7, QStringLiteral("ro"), QStringLiteral("0"));
        QCOMPARE(generate(project, {}, true),
                 QStringLiteral("/*\n"
                                " *  CO index/J1939 PGN/raw CAN-ID  defines for P - "
                                "generated by CANopen Kestrel 4.3.2\n"
                                " * DATE\n"
                                " */\n\n"
                                "/* protect against multiple inclusion of the file */\n"
                                "#ifndef GEN_INDICES_H\n"
                                "#define GEN_INDICES_H 1\n\n"
                                "#define  S_NUMBER_OF_ENTRIES      \t0x0u\n\n"
                                "#endif /* GEN_INDICES_H */\n"));
    }

    void cleanDefineName_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("runs of underscores") << QStringLiteral("I__A___B") << QStringLiteral("I_A_B");
        QTest::newRow("one underscore at each end goes") << QStringLiteral("_x_") << QStringLiteral("x");
        QTest::newRow("runs at the ends shrink first") << QStringLiteral("__x__") << QStringLiteral("x");
        QTest::newRow("umlauts and blanks") << QStringLiteral("S_GRÖSSE 1") << QStringLiteral("S_GR_SSE_1");
        QTest::newRow("empty") << QString() << QString();
    }

    void cleanDefineName()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QCOMPARE(IndicesGenerator::cleanDefineName(text), name);
    }

    void fileAndName()
    {
        IndicesGenerator generator;
        generator.setOutputPath(QStringLiteral("/out"));
        QCOMPARE(generator.outputFile(), QStringLiteral("/out/gen_indices.h"));
        QCOMPARE(generator.generatorName(), QStringLiteral("gen_indices.h generator"));
    }
};

QTEST_MAIN(TestIndicesGenerator)
#include "tst_indicesgenerator.moc"
