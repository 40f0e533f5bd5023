#include "helper.h"

#include <QFile>
#include <QRegularExpression>

#include <cctype>
#include <optional>

const QString Helper::csvDescLinebreak = QStringLiteral("<br>");

namespace {

// Recursive descent over + - * / % and parentheses on 64-bit integers; numbers in decimal or 0x hex.
class Calculation
{
public:
    explicit Calculation(const QString &text) : text(text) {}

    std::optional<qint64> evaluate()
    {
        auto value = sum();
        skipBlanks();
        if (!value || pos != text.size())
            return std::nullopt;
        return value;
    }

private:
    const QString &text;
    qsizetype pos = 0;

    void skipBlanks()
    {
        while (pos < text.size() && text.at(pos).isSpace())
            ++pos;
    }

    bool take(QChar c)
    {
        skipBlanks();
        if (pos < text.size() && text.at(pos) == c) {
            ++pos;
            return true;
        }
        return false;
    }

    std::optional<qint64> sum()
    {
        auto value = product();
        while (value) {
            if (take('+')) {
                auto rhs = product();
                value = rhs ? std::optional(*value + *rhs) : std::nullopt;
            } else if (take('-')) {
                auto rhs = product();
                value = rhs ? std::optional(*value - *rhs) : std::nullopt;
            } else {
                break;
            }
        }
        return value;
    }

    std::optional<qint64> product()
    {
        auto value = factor();
        while (value) {
            QChar op;
            if (take('*'))
                op = '*';
            else if (take('/'))
                op = '/';
            else if (take('%'))
                op = '%';
            else
                break;
            auto rhs = factor();
            if (!rhs || (op != '*' && *rhs == 0))
                return std::nullopt;
            value = op == '*' ? *value * *rhs : op == '/' ? *value / *rhs : *value % *rhs;
        }
        return value;
    }

    std::optional<qint64> factor()
    {
        if (take('-')) {
            auto value = factor();
            return value ? std::optional(-*value) : std::nullopt;
        }
        if (take('+'))
            return factor();
        if (take('(')) {
            auto value = sum();
            return value && take(')') ? value : std::nullopt;
        }
        skipBlanks();
        static const QRegularExpression number(QStringLiteral("0[xX][0-9a-fA-F]+|[0-9]+"));
        const auto match = number.match(text, pos, QRegularExpression::NormalMatch,
                                        QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            return std::nullopt;
        pos = match.capturedEnd();
        bool ok = false;
        const qint64 value = match.captured().toLongLong(&ok, 0);
        return ok ? std::optional(value) : std::nullopt;
    }
};

struct Variables
{
    quint16 index;
    quint8 subIndex;
    quint8 line;

    // Inside a calculation every variable stands for its value, so that "$I" and "$i" compute alike.
    std::optional<qint64> numeric(QChar name) const
    {
        switch (name.unicode()) {
        case 'i':
        case 'I':
            return index;
        case 's':
        case 'S':
            return subIndex;
        case 'z':
            return qint64(subIndex) - 1;
        case 'l':
            return line;
        case 'L':
            return qint64(line) + 1;
        default:
            return std::nullopt;
        }
    }

    std::optional<QString> text(QChar name) const
    {
        switch (name.unicode()) {
        case 'I':
            return QString::number(index, 16).toUpper();
        case 'S':
            return QString::number(subIndex, 16).toUpper();
        default:
            if (auto value = numeric(name))
                return QString::number(*value);
            return std::nullopt;
        }
    }
};

QString replaceVariables(const QString &text, const Variables &vars, bool numericForm)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == '$' && i + 1 < text.size()) {
            const QChar name = text.at(i + 1);
            std::optional<QString> value;
            if (!numericForm)
                value = vars.text(name);
            else if (const auto number = vars.numeric(name))
                value = QString::number(*number);
            if (value) {
                result += *value;
                ++i;
                continue;
            }
        }
        result += text.at(i);
    }
    return result;
}

} // namespace

QString Helper::substituteVariables(const QString &text, quint16 index, quint8 subIndex, quint8 line)
{
    if (!text.contains('$') && !text.contains('{'))
        return text;
    const Variables vars{index, subIndex, line};
    QString result;
    qsizetype done = 0;
    while (true) {
        const qsizetype open = text.indexOf('{', done);
        const qsizetype close = open < 0 ? -1 : text.indexOf('}', open + 1);
        if (close < 0)
            break;
        result += replaceVariables(text.mid(done, open - done), vars, false);
        const QString section = replaceVariables(text.mid(open + 1, close - open - 1), vars, true);
        // A section that is no calculation stays as the user wrote it, braces included.
        if (const auto value = Calculation(section).evaluate())
            result += QString::number(*value);
        else
            result += '{' + section + '}';
        done = close + 1;
    }
    result += replaceVariables(text.mid(done), vars, false);
    return result;
}

QString Helper::addLowerCaseUtoNumberLists(const QString &list)
{
    static const QRegularExpression number(QStringLiteral("(0[xX][0-9a-fA-F]+|[0-9]+)(?![0-9a-zA-Z_.])"));
    QString result = list;
    result.replace(number, QStringLiteral("\\1u"));
    return result;
}

QByteArray Helper::UTF8String2ByteArray(const QString &text)
{
    return text.toUtf8();
}

QString Helper::UTF8String2ArrayString(const QString &text)
{
    QString result = QStringLiteral("\"");
    bool afterHexEscape = false;
    for (const char c : text.toUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\' || c == '?') {
            // '?' is escaped so that no trigraph can form.
            result += '\\';
            result += QChar(byte);
            afterHexEscape = false;
        } else if (byte >= 0x20 && byte < 0x7f) {
            // A hex escape swallows every following hex digit, so the literal is split behind it.
            if (afterHexEscape && std::isxdigit(byte))
                result += QStringLiteral("\" \"");
            result += QChar(byte);
            afterHexEscape = false;
        } else {
            result += QStringLiteral("\\x%1").arg(byte, 2, 16, QChar('0'));
            afterHexEscape = true;
        }
    }
    result += '"';
    return result;
}

bool Helper::modifyLineEnding(const QString &path, const QString &ending)
{
    QFile file(path);
    if (!file.exists())
        return false;
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    file.close();

    QByteArray result;
    result.reserve(content.size() + content.size() / 16);
    const QByteArray newEnding = ending.toLatin1();
    for (qsizetype i = 0; i < content.size(); ++i) {
        const char c = content.at(i);
        if (c == '\r') {
            if (i + 1 < content.size() && content.at(i + 1) == '\n')
                ++i;
            result += newEnding;
        } else if (c == '\n') {
            result += newEnding;
        } else {
            result += c;
        }
    }
    if (result == content)
        return true;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(result) == result.size();
}
