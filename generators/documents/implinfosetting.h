#pragma once

// The user setting that adds the implementation details (implementation type, variable name, size) to
// the documents and the DBC file.
class ImplInfoSetting
{
public:
    // General/implinfo of the application's user settings equals 1.
    static bool read();
};
