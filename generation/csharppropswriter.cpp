#include "csharppropswriter.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

namespace {

const QStringList buildProps{
    QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>"),
    QStringLiteral("<!-- Auto-imported by MSBuild. Pulls in the generated define -->"),
    QStringLiteral("<!-- symbols (gen_define.props) if present; no error if absent. -->"),
    QStringLiteral("<Project>"),
    QStringLiteral("  <Import Project=\"$(MSBuildThisFileDirectory)gen_define.props\""),
    QStringLiteral("          Condition=\"Exists('$(MSBuildThisFileDirectory)gen_define.props')\" />"),
    QStringLiteral("</Project>"),
};

bool writeLines(const QString &path, const QStringList &lines)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(lines.join('\n').toUtf8()) >= 0;
}

// Macro names of the header in their order, each once.
bool readMacroNames(const QString &path, QStringList &names)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    static const QRegularExpression name(QStringLiteral("^[A-Za-z0-9_]+"));
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (!line.startsWith('#'))
            continue;
        const QString directive = line.mid(1).trimmed();
        if (!directive.startsWith(QLatin1String("define")))
            continue;
        const QString macro = name.match(directive.mid(6).trimmed()).captured();
        if (macro.isEmpty() || !(macro.at(0).isLetter() || macro.at(0) == '_') || names.contains(macro))
            continue;
        names << macro;
    }
    return true;
}

} // namespace

bool CSharpPropsWriter::write(const QString &outputPath)
{
    QString directory = outputPath;
    if (!directory.isEmpty() && !directory.endsWith('/'))
        directory += '/';
    QStringList names;
    const bool headerRead = readMacroNames(directory + QStringLiteral("gen_define.h"), names);
    if (!headerRead)
        qDebug() << "gen_define.h not found, writing Directory.Build.props only: " << directory;

    if (!writeLines(directory + QStringLiteral("Directory.Build.props"), buildProps)) {
        qDebug() << "Unable to write Directory.Build.props to " << directory;
        return false;
    }
    if (!headerRead)
        return true;
    QStringList props{
        QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>"),
        QStringLiteral("<!-- Auto-generated from gen_define.h - do not edit. -->"),
        QStringLiteral("<!-- C# conditional-compilation symbols that make the #if in the -->"),
        QStringLiteral("<!-- generated wrapper match the compiled stack_wrapper DLL. -->"),
        QStringLiteral("<!-- Imported automatically by Directory.Build.props when present. -->"),
        QStringLiteral("<Project>"),
        QStringLiteral("  <PropertyGroup>"),
    };
    for (const auto &name : std::as_const(names))
        props << QStringLiteral("    <DefineConstants>$(DefineConstants);") + name + QStringLiteral("</DefineConstants>");
    props << QStringLiteral("  </PropertyGroup>") << QStringLiteral("</Project>");
    if (!writeLines(directory + QStringLiteral("gen_define.props"), props)) {
        qDebug() << "Unable to write gen_define.props to " << directory;
        return false;
    }
    return true;
}
