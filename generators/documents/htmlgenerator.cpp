#include "htmlgenerator.h"

#include "busmodel/cohelper.h"
#include "generation/generatortext.h"
#include "generators/documents/documenttext.h"
#include "generators/documents/htmlpage.h"
#include "generators/documents/implinfosetting.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QDebug>
#include <QTextStream>
#include <QThread>

namespace {

constexpr quint16 firstManufacturerIndex = 0x2000;
constexpr quint16 firstProfileIndex = 0x6000;

// Label and description-settings key of the rows of the generation table, behind the time row.
struct GenerationRow
{
    const char *label;
    const char *key;
};

constexpr GenerationRow generationRows[] = {
    {"Vendor name:", "VendorName"},      {"Product name: ", "ProductName"}, {"File version:", "FileVersion"},
    {"File Revision: ", "FileRevision"}, {"Order Code:", "OrderCode"},      {"Created by: ", "CreatedBy"},
    {"Modified by: ", "ModifiedBy"},
};

} // namespace

GeneratorStatus HTMLGenerator::start()
{
    if (running)
        return GeneratorStatus::Busy;
    implInfo = ImplInfoSetting::read();
    return AbstractGenerator::start();
}

QString HTMLGenerator::outputFile() const
{
    if (multiLine)
        return QStringLiteral("%1/%2_%3%4.html")
            .arg(outputPath, projectName, QString::number(line), fileSuffix);
    return QStringLiteral("%1/%2%3.html").arg(outputPath, projectName, fileSuffix);
}

void HTMLGenerator::prepare()
{
    if (database)
        database->setDescriptionLine(line);
}

void HTMLGenerator::writeContent(QTextStream &out)
{
    if (!database)
        return;
    const QString date = GeneratorText::currentDate();
    HTMLPage page(out, HTMLPage::Kind::ObjectDictionary);
    page.writeHead(projectName, toolVersion, date);
    writeGenerationTable(out, date);
    writeCommentTable(out);
    writeFrameStart(out, QStringLiteral("    <td  colspan=\"2\">  Object Dictionary Documentation of ") +
                             projectName + QStringLiteral("</td>\n"));
    out << "  </table>\n"
        << "  </div>\n";

    const QList<quint16> indices = database->getIndices(line, 0x1000, 0xFFFF);
    writeTableOfContents(out, indices);
    out << "  <div class=\"center\">\n";
    for (const quint16 index : indices) {
        if (!writeObject(out, page, index))
            break;
    }
    out << "  </div>\n"
        << "  </body>\n"
        << " </html>\n";
}

void HTMLGenerator::writeFrameStart(QTextStream &out, const QString &headCell)
{
    out << "  <div class=\"left\">\n"
        << "  <table width=\"70%\">\n"
        << "   <tr class=\"head\">\n"
        << headCell << "   </tr>\n";
}

void HTMLGenerator::writeGenerationTable(QTextStream &out, const QString &date)
{
    writeFrameStart(
        out,
        QStringLiteral("    <td colspan=\"2\" id=\"gen\">Generation information %1</td>\n").arg(projectName));
    QStringList cells{QStringLiteral("Generation time: ") + date};
    for (const auto &row : generationRows)
        cells << QString::fromLatin1(row.label) +
                     database->getDescriptionSetting(QString::fromLatin1(row.key));
    bool alternate = true;
    for (const QString &cell : std::as_const(cells)) {
        out << (alternate ? "   <tr class=\"alt\">\n" : "   <tr>\n") << "   <td>" << cell << "</td>\n"
            << "   </tr>\n";
        alternate = !alternate;
    }
    out << "  </table>\n"
        << "  </div>\n"
        << "<br />\n"
        << "<br />\n";
}

void HTMLGenerator::writeCommentTable(QTextStream &out)
{
    writeFrameStart(out, QStringLiteral("    <td colspan=\"2\" id=\"com\">Comment</td>\n"));
    const QStringList lines =
        database->getDescriptionSetting(QStringLiteral("Comment")).trimmed().split('\n');
    for (const QString &text : lines)
        out << "   <tr>\n"
            << "   <td>" << text << "</td>\n"
            << "   </tr>\n";
    out << "  </table>\n"
        << "  </div>\n"
        << "<br />\n"
        << "<br />\n";
}

void HTMLGenerator::writeTableOfContents(QTextStream &out, const QList<quint16> &indices)
{
    out << " <div class=\"toc\">\n"
        << "<a href=\"#gen\">Generation Information</a><br />\n"
        << "<a href=\"#com\">Comment</a><br />\n";
    for (const quint16 index : indices) {
        if (abortRequested) {
            qDebug() << "Generation aborted";
            break;
        }
        // One gap before the manufacturer objects and one before the profile objects; a first object in the
        // profile range opens both sections at once.
        if (index >= firstManufacturerIndex && !manufacturerGap) {
            out << "<br>\n";
            manufacturerGap = true;
            profileGap = index >= firstProfileIndex;
        } else if (index >= firstProfileIndex && !profileGap) {
            out << "<br>\n";
            profileGap = true;
        }
        out << "<a href=\"#" << index << "\">" << DocumentText::hex(index, 4) << ' '
            << Helper::substituteVariables(database->getIndexName(line, index), index, 0, 0) << "</a><br>\n";
        QThread::yieldCurrentThread();
    }
    out << "  </div>\n";
}

bool HTMLGenerator::writeObject(QTextStream &out, HTMLPage &page, quint16 index)
{
    if (abortRequested) {
        qDebug() << "Generation aborted";
        return false;
    }
    INDEX_DATA_T object;
    if (!database->getIndex(line, index, object))
        return true;
    page.startBlock();
    out << " <p>\n"
        << "  <table border=\"1\" width=\"70%\">\n"
        << "   <tr>\n"
        << "    <th colspan=\"2\" id=\"" << index << "\"> Object: " << DocumentText::hex(index, 4) << ' '
        << Helper::substituteVariables(object.name, index, 0, 0) << "</th>\n"
        << "   </tr>\n";
    page.plainRow(QStringLiteral("Object Code"), COHelper::objectCode2String(object.objecttype));
    if (!object.description.isEmpty())
        page.countedRow(QStringLiteral("Description"), HTMLPage::escapeObjectText(object.description));
    out << "  </table>\n";
    const QList<quint8> subIndices = database->getSubIndices(line, index);
    for (const quint8 subIndex : subIndices) {
        out << " <br/>\n";
        writeSubIndex(out, page, index, subIndex);
    }
    out << " </p>\n"
        << "  <hr />\n";
    QThread::yieldCurrentThread();
    return true;
}

void HTMLGenerator::writeSubIndex(QTextStream &out, HTMLPage &page, quint16 index, quint8 subIndex)
{
    SUBINDEX_DATA_T sub;
    database->getSubIndex(line, index, subIndex, sub);
    out << "  <table border=\"1\" width=\"70%\">\n";
    page.startTable();
    page.countedRow(QStringLiteral("Sub "), DocumentText::hex(subIndex, 2), HTMLPage::Label::Bold);
    page.countedRow(QStringLiteral("Name "), Helper::substituteVariables(sub.name, index, subIndex, 0));
    page.countedRow(QStringLiteral("Data Type"), COHelper::index2DataTypeString(sub.datatype));
    page.countedRow(QStringLiteral("Access "), sub.accesstype);
    if (sub.defaultineds || sub.implementation == 1)
        page.countedRow(QStringLiteral("Defaultvalue "), sub.defaultvalue);
    if (sub.limitineds) {
        page.countedRow(QStringLiteral("Low Limit "), sub.lowlimit);
        page.countedRow(QStringLiteral("High Limit "), sub.uplimit);
    }
    if (!sub.description.isEmpty())
        page.countedRow(QStringLiteral("Description"), HTMLPage::escapeObjectText(sub.description));
    page.countedRow(QStringLiteral("PDO Mapping"), COHelper::pdoMapping2String(sub.pdomapping.toUInt()));
    if (implInfo) {
        page.countedRow(QStringLiteral("Implementation Type"),
                        COHelper::implementation2String(sub.implementation));
        if (sub.implementation == 2)
            page.countedRow(QStringLiteral("Variable Name"),
                            Helper::substituteVariables(sub.varname, index, subIndex, 0));
        if (sub.size != 0)
            page.countedRow(QStringLiteral("Size in bytes "), QString::number(sub.size));
    }
    out << "  </table>\n";
}
