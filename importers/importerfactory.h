#pragma once

#include <QString>

#include <memory>

class BaseDataImporter;

// The importer of a device description or object table, chosen by the file's last suffix.
class ImporterFactory
{
public:
    // For "eds", "dcf", "xdd", "csv", "icsv", "codb" and the project files "kprj", "ktxt" and "bak" in
    // lower case; null for any other suffix.
    static std::unique_ptr<BaseDataImporter> create(const QString &suffix);
};
