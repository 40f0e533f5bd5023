#include "documentprojects.h"
#include "documenttesthelpers.h"

#include "generators/documents/htmlgenerator.h"
#include "generators/documents/j1939htmlgenerator.h"
#include "support/projectbuilder.h"

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

using namespace DocumentTests;

namespace {

enum class Page
{
    Objects,
    J1939
};

QString generate(Page kind, ProjectBuilder &project, const RunOptions &options = RunOptions(),
                 QString *fileName = nullptr)
{
    QTemporaryDir dir;
    std::unique_ptr<AbstractGenerator> generator;
    if (kind == Page::Objects)
        generator = std::make_unique<HTMLGenerator>();
    else
        generator = std::make_unique<J1939HTMLGenerator>();
    if (!run(*generator, project.store(), dir.path(), options))
        return QStringLiteral("generator did not run");
    if (fileName)
        *fileName = QFileInfo(generator->outputFile()).fileName();
    return readText(generator->outputFile());
}

// Problems of the markup: tags that close what isn't open or stay open, links of the table of contents
// without their anchor. Empty when the page opens cleanly.
QStringList markupProblems(const QString &html)
{
    static const QSet<QString> voidElements{QStringLiteral("br"), QStringLiteral("hr")};
    static const QRegularExpression tag(QStringLiteral("<(/?)([A-Za-z][A-Za-z0-9]*)([^>]*)>"));
    static const QRegularExpression idAttribute(QStringLiteral("\\bid=\"([^\"]*)\""));
    static const QRegularExpression link(QStringLiteral("<a href=\"#([^\"]*)\""));
    QString body = html;
    body.remove(
        QRegularExpression(QStringLiteral("<!--.*?-->"), QRegularExpression::DotMatchesEverythingOption));
    body.remove(QRegularExpression(QStringLiteral("(?<=<style>).*?(?=</style>)"),
                                   QRegularExpression::DotMatchesEverythingOption));
    QStringList problems;
    QStringList open;
    auto tags = tag.globalMatch(body);
    while (tags.hasNext()) {
        const auto match = tags.next();
        const QString name = match.captured(2).toLower();
        if (voidElements.contains(name) || match.captured(3).endsWith('/'))
            continue;
        if (match.captured(1).isEmpty()) {
            open << name;
        } else if (open.isEmpty() || open.last() != name) {
            problems << QStringLiteral("</%1> closes %2")
                            .arg(name, open.isEmpty() ? QStringLiteral("nothing") : open.last());
            return problems;
        } else {
            open.removeLast();
        }
    }
    if (!open.isEmpty())
        problems << QStringLiteral("left open: ") + open.join(' ');
    QSet<QString> anchors;
    auto ids = idAttribute.globalMatch(body);
    while (ids.hasNext())
        anchors << ids.next().captured(1);
    auto links = link.globalMatch(body);
    int linkCount = 0;
    while (links.hasNext()) {
        const QString target = links.next().captured(1);
        ++linkCount;
        if (!anchors.contains(target))
            problems << QStringLiteral("link #%1 has no anchor").arg(target);
    }
    if (linkCount == 0)
        problems << QStringLiteral("no links");
    return problems;
}

// The lines of the table of contents, between its opening and closing lines.
QStringList tableOfContents(const QString &html)
{
    const QStringList all = lines(html);
    const qsizetype first = all.indexOf(QStringLiteral(" <div class=\"toc\">"));
    const qsizetype last = all.indexOf(QStringLiteral("  </div>"), first);
    return first < 0 || last < 0 ? QStringList() : all.mid(first + 1, last - first - 1);
}

} // namespace

class TestHtmlDocs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setUpApplication();
        setImplInfo(false);
    }

    void golden_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("goldenFile");
        QTest::newRow("object dictionary") << int(Page::Objects) << "html_objects.html";
        QTest::newRow("parameter groups") << int(Page::J1939) << "html_j1939.html";
    }

    void golden()
    {
        QFETCH(int, kind);
        QFETCH(QString, goldenFile);
        setImplInfo(true);
        ProjectBuilder project;
        if (Page(kind) == Page::Objects)
            DocumentProjects::canopen(project);
        else
            DocumentProjects::j1939Documents(project);
        const QString html = generate(Page(kind), project);
        setImplInfo(false);
        QCOMPARE(lines(maskTextDates(html)), lines(DocumentTests::golden(goldenFile)));
        QCOMPARE(markupProblems(html), QStringList());
    }

    void objectNames()
    {
        HTMLGenerator objects;
        J1939HTMLGenerator groups;
        QCOMPARE(objects.generatorName(), QStringLiteral("HTML documentation"));
        QCOMPARE(groups.generatorName(), QStringLiteral("HTML documentation"));
    }

    void gapsInTheTableOfContents_data()
    {
        QTest::addColumn<QList<int>>("indices");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("communication objects only")
            << QList<int>{0x1000, 0x1018} << QStringList{"#4096", "#4120"};
        QTest::newRow("first object in the profile range gets one gap")
            << QList<int>{0x1000, 0x6000} << QStringList{"#4096", "gap", "#24576"};
        QTest::newRow("all three ranges get two gaps")
            << QList<int>{0x1000, 0x2000, 0x2001, 0x6000, 0x6001}
            << QStringList{"#4096", "gap", "#8192", "#8193", "gap", "#24576", "#24577"};
        QTest::newRow("manufacturer objects only") << QList<int>{0x2100} << QStringList{"gap", "#8448"};
    }

    void gapsInTheTableOfContents()
    {
        QFETCH(QList<int>, indices);
        QFETCH(QStringList, entries);
        ProjectBuilder project;
        project.line(0, 1);
        for (const int index : indices)
            project.var(0, quint16(index), QStringLiteral("Object"), 7, QStringLiteral("rw"),
                        QStringLiteral("0"));
        const QString html = generate(Page::Objects, project);
        QStringList found;
        for (const QString &line : tableOfContents(html).mid(2))
            found << (line == QLatin1String("<br>") ? QStringLiteral("gap") : line.section('"', 1, 1));
        QCOMPARE(found, entries);
        QCOMPARE(markupProblems(html), QStringList());
    }

    void escaping_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("cell");
        QTest::newRow("object page escapes markup") << int(Page::Objects) << "a<b & c>d"
                                                    << "    <td>a&lt;b &amp; c&gt;d</td>";
        QTest::newRow("object page breaks lines") << int(Page::Objects) << "one\ntwo \u00c4\u00d6\u00dc"
                                                  << "    <td>one<br>two &Auml;&Ouml;&Uuml;</td>";
        QTest::newRow("group page keeps markup characters") << int(Page::J1939) << "a<b> & \u00fc\nc"
                                                            << "    <td>a<b> & &uuml;<br>c</td>";
    }

    void escaping()
    {
        QFETCH(int, kind);
        QFETCH(QString, description);
        QFETCH(QString, cell);
        ProjectBuilder project;
        if (Page(kind) == Page::Objects) {
            INDEX_DATA_T object;
            object.name = QStringLiteral("Thing");
            object.description = description;
            project.line(0, 1).object(0, 0x2000, object);
        } else {
            project.line(0, 2).pgn(
                0, DocumentProjects::pgn(0xFF00, Direction::Transmit, QStringLiteral("G"), description));
        }
        const QString html = generate(Page(kind), project);
        QVERIFY2(lines(html).contains(cell), qPrintable(html));
    }

    void implementationRowsOnlyWithImplInfo()
    {
        ProjectBuilder objects;
        DocumentProjects::canopen(objects);
        ProjectBuilder groups;
        DocumentProjects::j1939Documents(groups);
        for (const QString &html : {generate(Page::Objects, objects), generate(Page::J1939, groups)}) {
            QVERIFY(html.contains(QLatin1String("<td>Name </td>")));
            QVERIFY(!html.contains(QLatin1String("Implementation Type")));
            QVERIFY(!html.contains(QLatin1String("Variable Name")));
            QVERIFY(!html.contains(QLatin1String("Size in bytes")));
        }
    }

    void sameGroupInBothDirections()
    {
        ProjectBuilder project;
        project.line(0, 2)
            .pgn(0, DocumentProjects::pgn(0xFECA, Direction::Transmit, QStringLiteral("DM1 out")))
            .pgn(0, DocumentProjects::pgn(0xFECA, Direction::Receive, QStringLiteral("DM1 in")));
        const QString html = generate(Page::J1939, project);
        QCOMPARE(tableOfContents(html),
                 (QStringList{QStringLiteral("<a href=\"#65226\">0xFECA/65226 DM1 out</a><br>"),
                              QStringLiteral("<a href=\"#65226\">0xFECA/65226 DM1 in</a><br>")}));
        QCOMPARE(html.count(QLatin1String("id=\"65226\"")), 2);
    }

    void fileNames_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("fileName");
        QTest::newRow("one line") << int(Page::Objects) << false << ""
                                  << "demo.html";
        QTest::newRow("suffix of a mixed line") << int(Page::J1939) << false << "_j1939"
                                                << "demo_j1939.html";
        QTest::newRow("several lines") << int(Page::Objects) << true << "_co"
                                       << "demo_1_co.html";
    }

    void fileNames()
    {
        QFETCH(int, kind);
        QFETCH(bool, multiLine);
        QFETCH(QString, suffix);
        QFETCH(QString, fileName);
        ProjectBuilder project;
        project.line(0, 1).line(1, 5);
        RunOptions options;
        options.line = 1;
        options.multiLine = multiLine;
        options.fileSuffix = suffix;
        QString written;
        generate(Page(kind), project, options, &written);
        QCOMPARE(written, fileName);
    }

    void descriptionSettingsOfTheLine()
    {
        ProjectBuilder project;
        project.line(0, 1).line(1, 1).description(0, QStringLiteral("VendorName"), QStringLiteral("Zero"));
        project.description(1, QStringLiteral("VendorName"), QStringLiteral("One"));
        RunOptions options;
        options.line = 1;
        options.multiLine = true;
        const QString html = generate(Page::Objects, project, options);
        QVERIFY(lines(html).contains(QStringLiteral("   <td>Vendor name:One</td>")));
    }
};

QTEST_MAIN(TestHtmlDocs)
#include "tst_htmldocs.moc"
