#pragma once

#include "busmodel/pdomapping.h"

#include <QMap>
#include <QString>

using MetadataMap = QMap<QString, QString>;

// One CAN line, a row of Nodes.
struct NODE_DATA_T
{
    QString name;
    QString iconpath;
    QString edspath;
    QString dcfpath;
    QString xddpath;
    quint16 tpdocnt = 0;
    quint16 rpdocnt = 0;
    QString prefix = QStringLiteral("_");
    QString outputpath = QStringLiteral("C:/");
    bool ismaster = false;
    bool issyncproducer = false;
    bool issyncconsumer = false;
    bool ishbconsumer = false;
    bool isemergencyproducer = false;
    bool isemergencyconsumer = false;
    bool ismpdosupported = false;
    bool iscanopengateway = false;
    bool allpdosstatic = false;
    bool excludegeneration = false;
    bool generatedcf = true;
    bool isbootupmanager = false;
    bool isconfigmanager = false;
    bool excludepdolinking = false;
    qint32 multilinedata = 0;
    bool lssslave = false;

    bool operator==(const NODE_DATA_T &) const = default;
};

// One object of the object dictionary, a row of Objects%1.
struct INDEX_DATA_T
{
    QString name = QStringLiteral("unnamed object");
    quint16 datatype = 5;
    quint32 objecttype = 7;
    QString description;
    quint8 category = 1;
    QString device_class;
    bool fwsupported = false;
    MetadataMap metadata;

    bool operator==(const INDEX_DATA_T &) const = default;
};

// One sub-index, a row of SubObjects%1.
struct SUBINDEX_DATA_T
{
    QString name;
    quint16 datatype = 0;
    QString accesstype;
    QString defaultvalue;
    QString currentvalue;
    PDOMapping pdomapping;
    QString lowlimit;
    QString uplimit;
    quint32 size = 0;
    bool defaultineds = false;
    bool limitineds = false;
    bool refuseread = false;
    bool refusewrite = false;
    bool dcfcomponent = false;
    bool cyclicread = false;
    QString allowedaccesstypes;
    quint8 implementation = 0;
    QString description;
    QString varname;
    quint8 category = 0;
    // 0 no, 1 as the default value says (with defaultineds), 2 always.
    quint8 writedefaulttoeds = 0;
    bool changedbyuser = false;
    quint16 wizardsource = 0;
    bool sharedlines = false;
    QString denotation;
    bool managedbymrn = false;
    quint32 signalid = 0;
    bool nvstorage = false;
    MetadataMap metadata;

    bool operator==(const SUBINDEX_DATA_T &) const = default;
};

// Element of a batch insert of sub-indices.
struct SubEntry
{
    quint8 line = 0;
    quint16 index = 0;
    quint8 subindex = 0;
    SUBINDEX_DATA_T data;
};
