#include "usersection.h"

#include <QFile>
#include <QTextStream>

namespace {

const QString sectionStart = QStringLiteral("/* user-specific section: start */");
const QString sectionEnd = QStringLiteral("/* user-specific section: end */");

} // namespace

QString UserSection::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    QTextStream in(&file);
    QString section;
    bool inside = false;
    while (!in.atEnd()) {
        const QString line = in.readLine();
        if (inside) {
            if (line == sectionEnd)
                inside = false;
            else
                section += line + '\n';
        }
        if (line == sectionStart)
            inside = true;
    }
    return section;
}

void UserSection::write(QTextStream &out, const QString &section)
{
    out << "/* do not modify comments starting with 'user-specific section:' */\n"
        << sectionStart << '\n'
        << (section.isEmpty() ? QStringLiteral("\n") : section) << sectionEnd << '\n';
}
