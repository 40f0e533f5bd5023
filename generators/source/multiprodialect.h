#pragma once

#include <QList>
#include <QString>

struct ObjDictDialect;

// What the two stack generations write differently into gen_mp.c and gen_rawcan.c. The text is
// written in the words of the current generation; the older one renames them afterwards.
struct MultiProDialect
{
    // A word of the current generation and the older generation's word for it.
    struct Spelling
    {
        const char *pattern;
        const char *replacement;
    };

    const ObjDictDialect &objDict;
    // Only the current generation has a bootloader project of its own, written into gen_uds.c.
    bool bootloader;
    // The older generation starts the common part in a function of its own, mpStackInit_common, and
    // hands each line function the line's protocol.
    bool commonFunction;
    QList<Spelling> spellings;

    static const MultiProDialect &current();
    static const MultiProDialect &older();

    // The text in this generation's words.
    QString spell(const QString &text) const;
};
