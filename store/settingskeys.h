#pragma once

#include <QList>
#include <QPair>
#include <QStringList>

// The catalogue of settings keys that the store itself has to know: which rows are per-line comma
// lists, and the description defaults of a new line. Everything else is carried through by key.
class SettingsKeys
{
public:
    // GeneralSettings keys whose value is a comma list with one element per line.
    static const QStringList &perLineGeneralKeys();
    // The first of them, which a new line extends and an opening cuts to the number of lines.
    static const QStringList &lineExtendedGeneralKeys();
    // J1939Settings keys whose value is a comma list with one element per line.
    static const QStringList &perLineJ1939Keys();
    // DescriptionSettings keys with the defaults that a new line gets where a key is absent.
    static const QList<QPair<QString, QString>> &descriptionDefaults();
};
