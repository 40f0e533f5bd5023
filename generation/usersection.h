#pragma once

#include <QString>

class QTextStream;

// The part of gen_define.h that the user owns: the lines between two marker comments, carried over
// from the old file into each new one.
class UserSection
{
public:
    // The lines between the markers, each with its line feed; empty when the file or the markers are missing.
    static QString read(const QString &path);
    // The markers with the section between them; an empty section is one empty line.
    static void write(QTextStream &out, const QString &section);
};
