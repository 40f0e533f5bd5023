#pragma once

#include "generation/abstractgenerator.h"

class QXmlStreamWriter;

// Writes the XML device description (CiA 1311) of a CANopen FD line: a device profile and a
// communication network profile with the objects from 0x1000 to 0xBFFF.
class XDDGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    explicit XDDGenerator(QObject *parent = nullptr);

    // Asks for the file name of the single-line form.
    bool isOutputWritable() override;
    QString outputFile() const override;
    QString generatorName() const override;

protected:
    void writeContent(QTextStream &out) override;

private:
    enum class Profile
    {
        Device,
        CommunicationNetwork
    };

    QString singleLineFile() const;
    void writeProfile(QXmlStreamWriter &xml, Profile profile);
    void writeDeviceBody(QXmlStreamWriter &xml);
    void writeObjectList(QXmlStreamWriter &xml);
    void writeObject(QXmlStreamWriter &xml, quint16 index);
};
