#include "j1939htmlgenerator.h"

#include "busmodel/cohelper.h"
#include "generation/generatortext.h"
#include "generators/documents/documenttext.h"
#include "generators/documents/htmlpage.h"
#include "generators/documents/implinfosetting.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QDebug>
#include <QTextStream>

namespace {

QString pgnLabel(const PGN &pgn)
{
    return QStringLiteral("%1/%2").arg(DocumentText::hex(pgn.number, 4)).arg(pgn.number);
}

} // namespace

GeneratorStatus J1939HTMLGenerator::start()
{
    if (running)
        return GeneratorStatus::Busy;
    implInfo = ImplInfoSetting::read();
    return AbstractGenerator::start();
}

QString J1939HTMLGenerator::outputFile() const
{
    if (multiLine)
        return QStringLiteral("%1/%2_%3%4.html")
            .arg(outputPath, projectName, QString::number(line), fileSuffix);
    return QStringLiteral("%1/%2%3.html").arg(outputPath, projectName, fileSuffix);
}

void J1939HTMLGenerator::writeContent(QTextStream &out)
{
    if (!database)
        return;
    HTMLPage page(out, HTMLPage::Kind::J1939);
    page.writeHead(projectName, toolVersion, GeneratorText::currentDate());
    const QList<PGN> groups = readGroups(Direction::Transmit) + readGroups(Direction::Receive);
    database->cacheAllSPNs(line);
    writeTableOfContents(out, groups);
    out << "  <div class=\"center\">\n";
    for (const PGN &pgn : groups) {
        if (abortRequested) {
            qDebug() << "Generation aborted";
            break;
        }
        writeGroup(out, page, pgn);
    }
    out << "  </div>\n"
        << "  </body>\n"
        << " </html>\n";
    database->clearSPNCache();
}

QList<PGN> J1939HTMLGenerator::readGroups(quint8 direction)
{
    QList<PGN> groups;
    const QList<quint32> numbers = database->getPGNs(line, direction, false);
    for (const quint32 number : numbers) {
        PGN pgn;
        if (database->getPGN(line, number, direction, pgn))
            groups << pgn;
    }
    return groups;
}

void J1939HTMLGenerator::writeTableOfContents(QTextStream &out, const QList<PGN> &groups)
{
    out << " <div class=\"toc\">\n";
    for (const PGN &pgn : groups) {
        if (abortRequested) {
            qDebug() << "Generation aborted";
            break;
        }
        out << "<a href=\"#" << pgn.number << "\">" << pgnLabel(pgn) << ' ' << pgn.name << "</a><br>\n";
    }
    out << "  </div>\n";
}

void J1939HTMLGenerator::writeGroup(QTextStream &out, HTMLPage &page, const PGN &pgn)
{
    page.startBlock();
    out << " <p>\n"
        << "  <table border=\"1\" width=\"600\">\n"
        << "   <tr>\n"
        << "    <th colspan=\"2\" id=\"" << pgn.number << "\"> PGN: " << pgnLabel(pgn) << ' ' << pgn.name
        << "</th>\n"
        << "   </tr>\n";
    if (!pgn.desc.isEmpty())
        page.countedRow(QStringLiteral("Description"), HTMLPage::escapeJ1939Text(pgn.desc));
    out << "  </table>\n";
    const QList<quint32> numbers = database->getSPNs(line, pgn.number, pgn.direction);
    for (const quint32 number : numbers) {
        SPN spn;
        if (!database->getSPN(line, pgn.number, pgn.direction, number, spn))
            continue;
        out << " <br/>\n"
            << "  <table border=\"1\" width=\"600\">\n";
        page.startTable();
        page.countedRow(QStringLiteral("SPN "), QString::number(spn.spnnumber), HTMLPage::Label::Bold);
        page.countedRow(QStringLiteral("Name "), spn.name);
        page.countedRow(QStringLiteral("Data Type"), COHelper::index2DataTypeString(spn.datatype),
                        HTMLPage::Label::Wide);
        if (implInfo) {
            page.countedRow(QStringLiteral("Implementation Type"),
                            COHelper::implementation2String(spn.implementation));
            if (spn.implementation == 2)
                page.countedRow(
                    QStringLiteral("Variable Name"),
                    Helper::substituteVariables(spn.varname, quint16(pgn.number), quint8(spn.spnnumber), 0));
        }
        out << "  </table>\n";
    }
    out << " </p>\n"
        << "  <hr noshade width=\"600\" align=\"left\"/>\n";
}
