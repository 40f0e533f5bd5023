#include "udssiddefinitions.h"

const QMap<quint8, QString> &UDSSIDDefinitions::getSIDNames()
{
    static const QMap<quint8, QString> names{
        {UDS::DiagnosticSessionControl, QStringLiteral("DiagnosticSessionControl")},
        {UDS::ECUReset, QStringLiteral("ECUReset")},
        {UDS::ClearDiagnosticInformation, QStringLiteral("ClearDiagnosticInformation")},
        {UDS::ReadDTCInformation, QStringLiteral("ReadDTCInformation")},
        {UDS::ReadDataByIdentifier, QStringLiteral("ReadDataByIdentifier")},
        {UDS::ReadMemoryByAddress, QStringLiteral("ReadMemoryByAddress")},
        {UDS::ReadScalingDataByIdentifier, QStringLiteral("ReadScalingDataByIdentifier")},
        {UDS::SecurityAccess, QStringLiteral("SecurityAccess")},
        {UDS::CommunicationControl, QStringLiteral("CommunicationControl")},
        {UDS::Authentication, QStringLiteral("Authentication")},
        {UDS::ReadDataByPeriodicIdentifier, QStringLiteral("ReadDataByPeriodicIdentifier")},
        {UDS::DynamicallyDefineDataIdentifier, QStringLiteral("DynamicallyDefineDataIdentifier")},
        {UDS::WriteDataByIdentifier, QStringLiteral("WriteDataByIdentifier")},
        {UDS::InputOutputControlByIdentifier, QStringLiteral("InputOutputControlByIdentifier")},
        {UDS::RoutineControl, QStringLiteral("RoutineControl")},
        {UDS::RequestDownload, QStringLiteral("RequestDownload")},
        {UDS::RequestUpload, QStringLiteral("RequestUpload")},
        {UDS::TransferData, QStringLiteral("TransferData")},
        {UDS::RequestTransferExit, QStringLiteral("RequestTransferExit")},
        {UDS::RequestFileTransfer, QStringLiteral("RequestFileTransfer")},
        {UDS::WriteMemoryByAddress, QStringLiteral("WriteMemoryByAddress")},
        {UDS::TesterPresent, QStringLiteral("TesterPresent")},
        {UDS::SecuredDataTransmission, QStringLiteral("SecuredDataTransmission")},
        {UDS::ControlDTCSetting, QStringLiteral("ControlDTCSetting")},
        {UDS::ResponseOnEvent, QStringLiteral("ResponseOnEvent")},
        {UDS::LinkControl, QStringLiteral("LinkControl")},
    };
    return names;
}
