#pragma once

#include <QString>

class QTextStream;

// What the two HTML documents share: the head with its embedded style sheet, the escaping of free text
// and the rows of the tables, whose background alternates.
class HTMLPage
{
public:
    enum class Kind
    {
        ObjectDictionary,
        J1939
    };
    enum class Label
    {
        Plain,
        Bold,
        Wide
    };

    explicit HTMLPage(QTextStream &out, Kind kind);

    // From the comment line to the opening body tag.
    void writeHead(const QString &projectName, const QString &toolVersion, const QString &date);

    // A block of tables starts: its rows alternate from the first on.
    void startBlock() { rowCounter = 0; }
    // A table starts: its first plain row is written wider.
    void startTable() { firstRowOfTable = true; }
    // A row that takes part in the alternation.
    void countedRow(const QString &label, const QString &value, Label labelStyle = Label::Plain);
    // A row outside the alternation.
    void plainRow(const QString &label, const QString &value);

    // "&", "<", ">", the German umlauts and sharp s as entities, line feeds as "<br>".
    static QString escapeObjectText(const QString &text);
    // Only the umlauts, the sharp s and the line feeds.
    static QString escapeJ1939Text(const QString &text);

private:
    void writeCells(const QString &label, const QString &value, Label labelStyle);

    QTextStream &out;
    Kind kind;
    int rowCounter = 0;
    bool firstRowOfTable = false;
};
