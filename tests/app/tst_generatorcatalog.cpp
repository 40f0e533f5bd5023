#include "app/generatorcatalog.h"
#include "generation/abstractgenerator.h"

#include <QtTest>

Q_DECLARE_METATYPE(GeneratorKind)

// Every generator the catalogue provides names itself and its file as the driver's log and the
// not-writable check expect. Kinds without a generator yet are listed and skipped.
class TestGeneratorCatalog : public QObject
{
    Q_OBJECT

private slots:
    void namesAndFiles_data()
    {
        QTest::addColumn<GeneratorKind>("kind");
        QTest::addColumn<bool>("currentFamily");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");

        const struct
        {
            GeneratorKind kind;
            const char *row;
            const char *name;
            const char *file;
        } rows[] = {
            {GeneratorKind::Define, "configuration header", "gen_define.h", "gen_define.h"},
            {GeneratorKind::ObjDict, "object dictionary", "gen_objdict.c", "gen_objdict.c"},
            {GeneratorKind::Indices, "indices", "gen_indices.h generator", "gen_indices.h"},
            {GeneratorKind::ExtDecl, "declarations", "gen_extern_decl.h", "gen_extern_decl.h"},
            {GeneratorKind::Indication, "indications", "", "gen_indication.h"},
            {GeneratorKind::Pgn, "PGN source", "gen_pgn.c", "gen_pgn.c"},
            {GeneratorKind::MultiPro, "multi-protocol source", "gen_mp.c", "gen_mp.c"},
            {GeneratorKind::VObjDict, "virtual objects", "gen_vobjdict.c", "gen_vobjdict.c"},
            {GeneratorKind::Srdo, "safety objects", "gen_srdo.c", "gen_srdo.c"},
            {GeneratorKind::Sdm, "safety data", "gen_sdg.c", ""},
            {GeneratorKind::Eds, "EDS", "EDS file", "P.eds"},
            {GeneratorKind::Dbc, "J1939 DBC", "DBC File", "P.dbc"},
            {GeneratorKind::RawCanDbc, "raw CAN DBC", "P.dbc", "P.dbc"},
            {GeneratorKind::Html, "HTML", "HTML documentation", "P.html"},
            {GeneratorKind::J1939Html, "J1939 HTML", "HTML documentation", "P.html"},
            {GeneratorKind::TextDoc, "text", "textual documentation", "P_doc.txt"},
            {GeneratorKind::J1939TextDoc, "J1939 text", "j1939 textual documentation", "P_doc.txt"},
            {GeneratorKind::RawCanTextDoc, "raw CAN text", "rawcan_doc.txt", "P_doc.txt"},
            {GeneratorKind::Csv, "CSV", "CSV documentation", "P.csv"},
            {GeneratorKind::Icsv, "ICSV", "ICSV documentation", "P.icsv"},
        };
        for (const auto &row : rows) {
            for (const bool current : {true, false}) {
                QTest::addRow("%s, %s family", row.row, current ? "current" : "older")
                    << row.kind << current << QString::fromLatin1(row.name) << QString::fromLatin1(row.file);
            }
        }
    }

    void namesAndFiles()
    {
        QFETCH(GeneratorKind, kind);
        QFETCH(bool, currentFamily);
        QFETCH(QString, name);
        QFETCH(QString, file);
        GeneratorOptions options;
        options.currentFamily = currentFamily;
        auto generator = GeneratorCatalog().create(kind, options);
        if (!generator)
            QSKIP("no generator of this kind yet");
        generator->setOutputPath(QStringLiteral("/out"));
        generator->setProjectName(QStringLiteral("P"));
        generator->setLine(0);
        if (!name.isEmpty())
            QCOMPARE(generator->generatorName(), name);
        if (!file.isEmpty())
            QCOMPARE(generator->outputFile(), QStringLiteral("/out/") + file);
    }
};

QTEST_MAIN(TestGeneratorCatalog)
#include "tst_generatorcatalog.moc"
