#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The sections and keys of an INI text as CiA 306 uses it: names of sections and keys are compared
// without regard to case, lines starting with ';' are comments, and a value is everything behind the
// first '=', trimmed. The order of the file is kept. Whatever cannot be read is skipped and reported in
// warnings(), with its line number.
class IniDocument
{
public:
    struct Entry
    {
        QString key;
        QString value;
        int line = 0;
    };

    struct Section
    {
        QString name;
        int line = 0;
        QList<Entry> entries;
        // Lower-case key to its position in entries.
        QHash<QString, qsizetype> keys;

        const Entry *find(const QString &key) const;
    };

    // False when the file cannot be read.
    bool load(const QString &path);
    // UTF-8 text, or Latin-1 where the bytes are no valid UTF-8.
    void parse(const QByteArray &data);

    const QList<Section> &sections() const { return sectionList; }
    // Null when the document has no such section.
    const Section *section(const QString &name) const;
    bool hasKey(const QString &section, const QString &key) const;
    // Empty when the section or the key is missing.
    QString value(const QString &section, const QString &key) const;
    // At most a hundred texts, then one line that counts the rest, so that a binary file reads quickly.
    QStringList warnings() const;
    // Lets a reader of the document report in the same list.
    void addWarning(const QString &text);

private:
    void parseLine(const QString &text, int lineNumber, Section *&current);

    QList<Section> sectionList;
    // Lower-case section name to its position in sectionList.
    QHash<QString, qsizetype> sectionsByName;
    QStringList problems;
    int unlisted = 0;
};
