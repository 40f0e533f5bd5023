#include "inidocument.h"

#include <QFile>
#include <QStringDecoder>

namespace {

constexpr int listedWarnings = 100;

QString decode(const QByteArray &data)
{
    QStringDecoder utf8(QStringConverter::Utf8);
    QString text = utf8(data);
    if (utf8.hasError())
        text = QString::fromLatin1(data);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

} // namespace

const IniDocument::Entry *IniDocument::Section::find(const QString &key) const
{
    const auto found = keys.constFind(key.toLower());
    return found == keys.constEnd() ? nullptr : &entries.at(found.value());
}

bool IniDocument::load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        addWarning(QStringLiteral("%1: %2").arg(path, file.errorString()));
        return false;
    }
    parse(file.readAll());
    return true;
}

void IniDocument::parse(const QByteArray &data)
{
    QString text = decode(data);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace('\r', '\n');
    Section *current = nullptr;
    int lineNumber = 0;
    qsizetype start = 0;
    while (start <= text.size()) {
        qsizetype end = text.indexOf('\n', start);
        if (end < 0)
            end = text.size();
        ++lineNumber;
        parseLine(text.mid(start, end - start).trimmed(), lineNumber, current);
        start = end + 1;
    }
}

void IniDocument::parseLine(const QString &text, int lineNumber, Section *&current)
{
    if (text.isEmpty() || text.startsWith(';'))
        return;
    if (text.startsWith('[')) {
        const qsizetype close = text.indexOf(']');
        const QString name = close < 0 ? QString() : text.mid(1, close - 1).trimmed();
        if (name.isEmpty()) {
            addWarning(QStringLiteral("line %1: malformed section head \"%2\", its keys are skipped")
                           .arg(lineNumber)
                           .arg(text));
            current = nullptr;
            return;
        }
        const QString key = name.toLower();
        const auto known = sectionsByName.constFind(key);
        if (known != sectionsByName.constEnd()) {
            addWarning(QStringLiteral("line %1: section [%2] appears again, its keys join the first one")
                           .arg(lineNumber)
                           .arg(name));
            current = &sectionList[known.value()];
            return;
        }
        sectionsByName.insert(key, sectionList.size());
        sectionList.append(Section{name, lineNumber, {}, {}});
        // Appending may move the sections; the pointer is taken anew at every head.
        current = &sectionList.last();
        return;
    }
    const qsizetype equals = text.indexOf('=');
    if (equals <= 0) {
        addWarning(QStringLiteral("line %1: \"%2\" is no key=value line, skipped").arg(lineNumber).arg(text));
        return;
    }
    if (!current) {
        addWarning(QStringLiteral("line %1: key outside a section, skipped").arg(lineNumber));
        return;
    }
    const QString key = text.left(equals).trimmed();
    const QString lowerKey = key.toLower();
    if (current->keys.contains(lowerKey)) {
        addWarning(QStringLiteral("line %1: key %2 appears again in [%3], the first value stands")
                       .arg(lineNumber)
                       .arg(key, current->name));
        return;
    }
    current->keys.insert(lowerKey, current->entries.size());
    current->entries.append(Entry{key, text.mid(equals + 1).trimmed(), lineNumber});
}

const IniDocument::Section *IniDocument::section(const QString &name) const
{
    const auto found = sectionsByName.constFind(name.toLower());
    return found == sectionsByName.constEnd() ? nullptr : &sectionList.at(found.value());
}

bool IniDocument::hasKey(const QString &sectionName, const QString &key) const
{
    const Section *found = section(sectionName);
    return found && found->find(key);
}

QString IniDocument::value(const QString &sectionName, const QString &key) const
{
    const Section *found = section(sectionName);
    const Entry *entry = found ? found->find(key) : nullptr;
    return entry ? entry->value : QString();
}

QStringList IniDocument::warnings() const
{
    if (unlisted == 0)
        return problems;
    return problems + QStringList{QStringLiteral("%1 further problems not listed").arg(unlisted)};
}

void IniDocument::addWarning(const QString &text)
{
    if (problems.size() < listedWarnings)
        problems << text;
    else
        ++unlisted;
}
