#pragma once

class IniDocument;
class ObjectDataBase;

// Takes the descriptive sections of an EDS ([FileInfo], [DeviceInfo], [DummyUsage], [Comments]) into the
// description settings of the store's active description line. Keys the file lacks leave their setting.
class EdsDescriptionReader
{
public:
    static void apply(const IniDocument &document, ObjectDataBase &store);
};
