#pragma once

#include <QHash>
#include <QSet>
#include <QString>

// Everything in which the configuration header of the older stack generation differs from the
// current one. The blocks write the current names and ask here; the older twin's differences are
// all in this one table.
class DefineFamily
{
public:
    static const DefineFamily &current();
    static const DefineFamily &older();

    // Title line of the file head, %1 project, %2 application, %3 version.
    QString titleTemplate;
    // The date of the head in the user's `date_time_format` instead of the toolkit's text date.
    bool userDateFormat = false;
    // Macro names that this family writes differently; an empty name is not written at all.
    QHash<QString, QString> renamed;
    // Macros written with a blank before the tab.
    QSet<QString> blankBeforeTab;
    // `uds_bl_setting` and `uds_static_indication` bind the header to the bootloader and the UDS indications.
    bool readsBootloaderSettings = true;
    // The flying master comes from `flyma_supported` instead of bit 5 of 0x1F80.
    bool flyingMasterFromSetting = false;
    // `routing_counts` gives the routing counts when it is set.
    bool routingCountsSetting = false;
    // The dynamic check-write events of the SDO and USDO servers.
    bool checkWriteEvents = false;
    // Counts of virtual objects, octet strings, visible strings and domains beside the typed ones.
    bool extraVirtualCounts = false;

    // The name under which this family writes a macro; empty when it doesn't write it.
    QString macroName(const QString &name) const;
};
