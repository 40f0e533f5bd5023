#pragma once

#include <QString>

// Direction of a PGN or CAN-ID as stored: transmit 'U', receive 'w'.
namespace Direction {
constexpr quint8 Transmit = 'U';
constexpr quint8 Receive = 'w';
constexpr quint8 Both = 0;
} // namespace Direction

// One J1939 parameter group in one direction, a row of PGNs%1.
struct PGN
{
    QString name;
    QString desc;
    quint32 number = 0;
    quint8 edp_dp_key = 0;
    quint8 priority = 0;
    quint16 cycletime_ms = 0;
    quint16 inhibittime_ms = 0;
    quint16 mappingcount = 0;
    quint8 direction = 0;
    quint16 srvt_ms = 0;
    bool issafe = false;
    quint8 FD_TrailerFormat = 0;
    quint8 FD_AssuranceType = 0;
    quint8 FD_AssuranceDataSize = 0;
    // How many source addresses one receive definition serves; 0 and 1 both mean one.
    quint8 multisourceaddress = 0;
    quint8 safetytype = 0;
    quint32 FD_DataId = 0;

    bool operator==(const PGN &) const = default;
};

// One suspect parameter of a PGN, a row of SPNs%1.
struct SPN
{
    quint8 pos = 0;
    QString name;
    QString desc;
    QString defaultvalue = QStringLiteral("0");
    quint16 datatype = 0;
    quint32 pgnnumber = 0;
    quint8 direction = 0;
    quint32 spnnumber = 0;
    quint8 implementation = 2;
    QString varname;
    quint16 bitsize = 0;
    quint16 slot_df = 0;
    quint16 bitposition = 0;

    bool operator==(const SPN &) const = default;
};

// One raw CAN identifier in one direction, a row of CANIDs%1.
struct CANID
{
    quint32 id = 0;
    QString name;
    QString desc;
    quint16 cycletime_ms = 0;
    quint16 inhibittime_ms = 0;
    quint16 mappingcount = 0;
    quint8 direction = 0;

    bool operator==(const CANID &) const = default;
};

// One signal of a CAN-ID, a row of DataElements%1.
struct DataElement
{
    quint8 pos = 0;
    QString name;
    QString desc;
    QString defaultvalue = QStringLiteral("0");
    quint16 datatype = 0;
    quint32 canid = 0;
    quint8 direction = 0;
    quint32 number = 0;
    quint8 implementation = 2;
    QString varname;
    quint16 bitsize = 0;
    quint16 bitpos = 0;

    bool operator==(const DataElement &) const = default;
};
