#pragma once

#include <QList>
#include <QString>

#include <functional>

struct DefineContext;

// The CANopen part of gen_define.h: the per-line settings, the profile and the services down to
// the USDO; the PDOs and the rest follow in DefinePdoBlock.
class DefineCanopenBlock
{
public:
    explicit DefineCanopenBlock(DefineContext &context);
    void write();

private:
    void writeLineSettings();
    void writeNodeIds();
    void scanDataTypes();
    void writeProfile();
    void writeServices();
    void writeRouting();
    void writeSdoCounts();
    void writeUsdo();
    // The per-line list of a count.
    QString perLine(const std::function<qint64(quint8 line)> &value,
                    const QString &separator = QStringLiteral(", ")) const;

    DefineContext &context;
    bool extendedTypes = false;
    bool utf8Type = false;
};
