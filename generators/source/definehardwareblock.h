#pragma once

#include <QString>

struct DefineContext;

// The targets the stack is built for: one section per target, guarded by the target's macro.
class DefineHardwareBlock
{
public:
    explicit DefineHardwareBlock(DefineContext &context);
    void write();

private:
    // The settings of one target.
    struct Target
    {
        QString id;
        QString name;
        QString timer;
        bool bigEndian = false;
        bool filter = false;
        bool groupFilter = false;
        QString defines;
    };

    void writeSingleTarget();
    void writeTargets();
    // The one target of the single-target form, from the plain keys.
    Target singleTarget() const;
    // A target of several, from its numbered keys.
    Target numberedTarget(qint64 number) const;
    void writeSection(const Target &target, bool active, const QString &title);
    // An interval given as a number; with zeroAsWritten a zero keeps the user's text.
    void writeTimer(const QString &macro, const QString &value, bool zeroAsWritten);

    DefineContext &context;
};
