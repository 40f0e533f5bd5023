#pragma once

class IniDocument;
class ObjectDataBase;

// Takes the descriptive sections of an EDS ([FileInfo], [DeviceInfo], [DummyUsage], [Comments]) into the
// description settings of the store's active description line. A key the file lacks empties its
// setting, so that the settings describe the file read and nothing before it.
class EdsDescriptionReader
{
public:
    static void apply(const IniDocument &document, ObjectDataBase &store);
};
