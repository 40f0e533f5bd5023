#pragma once

#include <QString>

// Number forms of the human-readable documents.
class DocumentText
{
public:
    // "0x" and the value in upper-case hexadecimal digits, padded with zeros to `digits`.
    static QString hex(quint32 value, int digits);
};
