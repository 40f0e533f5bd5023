#pragma once

#include <QString>

// What an edition of the program differs in. Everything is derived from the application name at run time.
class Edition
{
public:
    static bool isCANopen(const QString &applicationName);
    static bool isJ1939(const QString &applicationName);
    static bool isCan(const QString &applicationName);
    static bool isEnergyBusWizard(const QString &applicationName);

    // `line0type` written at start: "1", "2" or empty for none.
    static QString startLineType(const QString &applicationName);
    // Project template of New Project.
    static QString templatePath(const QString &applicationName);
    // Catalogue of standard objects that the edition loads at start without a project.
    static QString standardObjectLibrary(const QString &applicationName);

    static QString current();
};
