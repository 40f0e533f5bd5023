#pragma once

#include <string>

class CANdbDatabase;

// Receiver of the notes of a read; without one they go to standard output.
class CANdbMessageSink
{
public:
    virtual ~CANdbMessageSink() = default;
    virtual void message(int line, const std::string &file, const std::string &text) = 0;
    virtual void warning(int line, const std::string &file, const std::string &text) = 0;
};

// A file that holds a database: the reporting shared by the formats; each format reads and writes.
class CANdbFileIo
{
public:
    // Each report is cut to this many characters before it is framed.
    static constexpr size_t reportLength = 199;

    // A null file name gives an object that can't open anything.
    explicit CANdbFileIo(const char *filename);
    virtual ~CANdbFileIo() = default;
    CANdbFileIo(const CANdbFileIo &) = delete;
    CANdbFileIo &operator=(const CANdbFileIo &) = delete;

    virtual void message(const std::string &text);
    // Adds "Error (line %d): %s\n" to the error text.
    virtual void error(const std::string &text);
    virtual void warning(const std::string &text);
    // 0 on success, else -1; the error text tells why.
    virtual int read(CANdbDatabase &database) = 0;
    virtual int write(const CANdbDatabase &database) = 0;

    void setSink(CANdbMessageSink *messageSink) { sink = messageSink; }
    const std::string &errorText() const { return errors; }

protected:
    std::string filename;
    bool hasFilename = false;
    bool ok = false;
    CANdbMessageSink *sink = nullptr;
    std::string errors;
    int line = 1;
};
