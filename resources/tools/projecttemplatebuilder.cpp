// Build step: turns a project in its text form into the binary project file the program ships.

#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTREL_VERSION));
    QStandardPaths::setTestModeEnabled(true);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fprintf(stderr, "usage: projecttemplatebuilder <project.ktxt> <output> <edition>\n");
        return 2;
    }
    // The file counts as made by the edition that ships it.
    QCoreApplication::setApplicationName(arguments.at(3));
    ObjectDataBase store;
    if (!store.loadTextDatabase(arguments.at(1))) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(arguments.at(1)));
        return 1;
    }
    QFile::remove(arguments.at(2));
    if (!store.saveDatabase(arguments.at(2))) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(arguments.at(2)));
        return 1;
    }
    QFile::remove(arguments.at(2) + QStringLiteral(".bak"));
    return 0;
}
