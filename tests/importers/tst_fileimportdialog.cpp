#include "importers/fileimportdialog.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <cstdio>
#include <unistd.h>

namespace {

const QByteArray deviceEds = "[DeviceInfo]\nVendorName=File Vendor\n"
                             "[2000]\nParameterName=Speed\nDataType=6\nAccessType=rw\nDefaultValue=1\n"
                             "[2001]\nParameterName=Level Values\nObjectType=8\nSubNumber=3\n"
                             "[2001sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\nDefaultValue=9\n"
                             "[2001sub1]\nParameterName=First\nDataType=5\nAccessType=rw\n"
                             "[2001sub2]\nParameterName=Second\nDataType=5\nAccessType=rw\n"
                             "[6000]\nParameterName=Input\nDataType=5\nAccessType=ro\n";

// What the program writes to stderr while it lives; without a user every box and dialog reports there.
class StderrCapture
{
public:
    StderrCapture()
    {
        file.open();
        std::fflush(stderr);
        saved = dup(STDERR_FILENO);
        dup2(file.handle(), STDERR_FILENO);
    }
    ~StderrCapture() { restore(); }

    QString text()
    {
        restore();
        file.seek(0);
        return QString::fromLocal8Bit(file.readAll()).trimmed();
    }

private:
    void restore()
    {
        if (saved < 0)
            return;
        std::fflush(stderr);
        dup2(saved, STDERR_FILENO);
        close(saved);
        saved = -1;
    }

    QTemporaryFile file;
    int saved = -1;
};

// The dialog with a project that already has 0x2000, and the scratch store beside it.
class Fixture
{
public:
    Fixture()
    {
        project.line(0, 1);
        project.var(0, 0x2000, QStringLiteral("Old speed"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        scratch.createNewDataBase();
        dialog.setProjectStore(&project.store());
        dialog.setScratchStore(&scratch);
        dialog.setLine(0);
    }

    template<typename Widget> Widget *widget(const char *name)
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }

    QString file(const char *name, const QByteArray &content)
    {
        const QString path = folder.filePath(QLatin1String(name));
        TestProjects::writeFile(path, content);
        return path;
    }

    // Reads the file with the range and waits until the list is filled.
    bool read(const QString &path, const QString &low = QStringLiteral("0x2000"),
              const QString &high = QStringLiteral("0x5FFF"))
    {
        widget<QLineEdit>("edtFilePath")->setText(path);
        widget<QLineEdit>("edtLow")->setText(low);
        widget<QLineEdit>("edtHigh")->setText(high);
        widget<QLabel>("lblObjCount")->clear();
        widget<QPushButton>("btnRead")->click();
        return QTest::qWaitFor([this] { return !widget<QLabel>("lblObjCount")->text().isEmpty(); }, 10000);
    }

    QStringList rows()
    {
        QStringList texts;
        auto *list = widget<QListWidget>("lbObjects");
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
        return texts;
    }

    void importAll()
    {
        widget<QListWidget>("lbObjects")->selectAll();
        widget<QPushButton>("btnImport")->click();
    }

    ProjectBuilder project;
    ObjectDataBase scratch;
    FileImportDialog dialog;
    QTemporaryDir folder;
};

QSettings userSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

} // namespace

class TestFileImportDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setOrganizationName(QStringLiteral("vorlan"));
        qApp->setProperty("AppNameWithVersion", QStringLiteral("CANopen Kestrel 4.3.2"));
    }

    void init() { userSettings().clear(); }

    void controlsOfTheWindow()
    {
        Fixture fixture;
        QCOMPARE(fixture.dialog.windowTitle(), QStringLiteral("File Import"));
        QCOMPARE(fixture.widget<QPushButton>("btnRead")->text(), QStringLiteral("Read data file"));
        QCOMPARE(fixture.widget<QLineEdit>("edtOffset")->text(), QStringLiteral("0x0000"));
        QCOMPARE(fixture.widget<QSpinBox>("spMaxSub")->value(), 254);
        QCOMPARE(fixture.widget<QLineEdit>("edtLow")->text(), QStringLiteral("0x6000"));
        QCOMPARE(fixture.widget<QLineEdit>("edtHigh")->text(), QStringLiteral("0x9FFF"));
        QCOMPARE(fixture.widget<QComboBox>("cbImplementation")->itemText(2),
                 QStringLiteral("keep as in source (csv, kprj)"));
        QCOMPARE(fixture.widget<QComboBox>("cbKPRJ")->itemText(0), QString());
        QCOMPARE(fixture.widget<QListWidget>("lbObjects")->selectionMode(),
                 QAbstractItemView::ExtendedSelection);
    }

    void readListsTheObjectsAndMarksThoseThatExist()
    {
        Fixture fixture;
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds)));
        QCOMPARE(fixture.rows(), QStringList({"0x2000 - Speed", "0x2001 - Level Values"}));
        auto *list = fixture.widget<QListWidget>("lbObjects");
        QCOMPARE(list->item(0)->foreground().color(), QColor(255, 25, 25));
        QVERIFY(list->item(1)->foreground().color() != QColor(255, 25, 25));
        QCOMPARE(fixture.widget<QLabel>("lblObjCount")->text(),
                 QStringLiteral(
                     "2 objects read. (1 red objects already exist in project. Import overwrites them.)"));
        QVERIFY(fixture.widget<QPushButton>("btnRead")->isEnabled());
        QCOMPARE(userSettings().value(QStringLiteral("General/importstartindex")).toString(),
                 QStringLiteral("0x2000"));
        QCOMPARE(userSettings().value(QStringLiteral("General/importendindex")).toString(),
                 QStringLiteral("0x5FFF"));
    }

    void readOutsideTheFile()
    {
        Fixture fixture;
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds), QStringLiteral("0x7000"),
                             QStringLiteral("0x7FFF")));
        QCOMPARE(fixture.widget<QLabel>("lblObjCount")->text(), QStringLiteral("0 objects read."));
    }

    void importWithOffset_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("implementation");
        QTest::addColumn<QString>("varName");
        QTest::addColumn<QString>("label");
        QTest::newRow("managed variables") << 0 << 0 << ""
                                           << "2 objects imported as managed variables.";
        QTest::newRow("application variables") << 1 << 2 << "level_values[0]"
                                               << "2 objects imported as application variables.";
    }

    void importWithOffset()
    {
        QFETCH(int, row);
        QFETCH(int, implementation);
        QFETCH(QString, varName);
        QFETCH(QString, label);
        Fixture fixture;
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds)));
        fixture.widget<QLineEdit>("edtOffset")->setText(QStringLiteral("0x100"));
        fixture.widget<QComboBox>("cbImplementation")->setCurrentIndex(row);
        fixture.importAll();
        ObjectDataBase &project = fixture.project.store();
        QCOMPARE(project.getIndices(0), (QList<quint16>{0x2000, 0x2100, 0x2101}));
        QCOMPARE(project.getIndexName(0, 0x2000), QStringLiteral("Old speed"));
        SUBINDEX_DATA_T first;
        project.getSubIndex(0, 0x2101, 1, first);
        QCOMPARE(int(first.implementation), implementation);
        QCOMPARE(first.varname, varName);
        QCOMPARE(project.getSubIndexDefaultValue(0, 0x2101, 0), QStringLiteral("2"));
        QCOMPARE(fixture.widget<QLabel>("lblObjCount")->text(), label);
        QVERIFY(fixture.widget<QPushButton>("btnImport")->isEnabled());
    }

    void overwriteReplacesTheWholeObject()
    {
        Fixture fixture;
        fixture.project.sub(0, 0x2000, 7, QStringLiteral("Stray"), 5, QStringLiteral("ro"),
                            QStringLiteral("0"));
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds)));
        fixture.widget<QListWidget>("lbObjects")->item(0)->setSelected(true);
        fixture.widget<QPushButton>("btnImport")->click();
        QCOMPARE(fixture.project.store().getIndexName(0, 0x2000), QStringLiteral("Speed"));
        QCOMPARE(fixture.project.store().getSubIndices(0, 0x2000), QList<quint8>{0});
        QCOMPARE(fixture.widget<QLabel>("lblObjCount")->text(),
                 QStringLiteral("1 objects imported as managed variables."));
    }

    void highestSubIndexZero()
    {
        Fixture fixture;
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds)));
        fixture.widget<QSpinBox>("spMaxSub")->setValue(0);
        fixture.importAll();
        QCOMPARE(fixture.project.store().getSubIndices(0, 0x2001), QList<quint8>{0});
        QCOMPARE(fixture.project.store().getSubIndexDefaultValue(0, 0x2001, 0), QStringLiteral("0"));
    }

    void descriptionOfTheFile_data()
    {
        QTest::addColumn<bool>("checked");
        QTest::addColumn<QString>("vendor");
        QTest::newRow("check box set") << true << "File Vendor";
        QTest::newRow("check box clear") << false << "Project Vendor";
    }

    void descriptionOfTheFile()
    {
        QFETCH(bool, checked);
        QFETCH(QString, vendor);
        Fixture fixture;
        fixture.project.description(0, QStringLiteral("VendorName"), QStringLiteral("Project Vendor"));
        QVERIFY(fixture.read(fixture.file("device.eds", deviceEds)));
        fixture.widget<QCheckBox>("chIncludeMultiple")->setChecked(checked);
        fixture.importAll();
        QCOMPARE(fixture.project.store().getDescriptionSetting(QStringLiteral("VendorName")), vendor);
    }

    void commandsOfACsvTable()
    {
        Fixture fixture;
        fixture.project.var(0, 0x2001, QStringLiteral("Doomed"), 5, QStringLiteral("ro"),
                            QStringLiteral("0"));
        QVERIFY(fixture.read(fixture.file("table.csv", "index,sub,edsname,datatype,access,value\n"
                                                       "0x2002,0,Copied,u8,rw,5\n"
                                                       "c,0x3000,0x2002\nd,0x2001\n")));
        QCOMPARE(fixture.widget<QComboBox>("cbImplementation")->currentIndex(), 2);
        fixture.importAll();
        ObjectDataBase &project = fixture.project.store();
        QCOMPARE(project.getIndices(0), (QList<quint16>{0x2000, 0x2002, 0x3000}));
        QCOMPARE(project.getIndexName(0, 0x3000), QStringLiteral("Copied"));
        QCOMPARE(fixture.widget<QLabel>("lblObjCount")->text(),
                 QStringLiteral("1 objects imported as original implementation types."));
    }

    void messages_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("message");
        QTest::newRow("file not readable")
            << "" << QByteArray() << "[message] CANopen Kestrel: File error (File %1 is not readable.)";
        QTest::newRow("format not supported") << "notes.txt" << QByteArray("text")
                                              << "[message] CANopen Kestrel: Format of  %1 is not supported.";
        QTest::newRow("importer error") << "empty.xdd" << QByteArray("<?xml version=\"1.0\"?><root/>")
                                        << "[message] Import error: %1 has is not in CiA 1311 XDD format.";
    }

    void messages()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(QString, message);
        Fixture fixture;
        const QString path = name.isEmpty() ? fixture.folder.filePath(QStringLiteral("missing.eds"))
                                            : fixture.file(name.toLatin1().constData(), content);
        StderrCapture capture;
        fixture.widget<QLineEdit>("edtFilePath")->setText(path);
        fixture.widget<QPushButton>("btnRead")->click();
        QTest::qWait(100);
        QTRY_VERIFY(fixture.widget<QPushButton>("btnRead")->isEnabled());
        QCoreApplication::processEvents();
        QCOMPARE(capture.text(), message.arg(path));
    }

    void fileTypeControls_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("checkEnabled");
        QTest::addColumn<bool>("sourceLine");
        QTest::newRow("catalogue") << "/lib/objects.codb"
                                   << "Include object copies" << true << false;
        QTest::newRow("EDS") << "/lib/device.EDS"
                             << "Import FileInfo && DeviceInfo" << true << false;
        QTest::newRow("DCF") << "/lib/device.dcf"
                             << "Import FileInfo && DeviceInfo" << true << false;
        QTest::newRow("XDD") << "/lib/device.xdd"
                             << "" << false << false;
        QTest::newRow("project") << "/lib/board.kprj"
                                 << "Ignore implementation types in project file" << true << true;
        QTest::newRow("project backup") << "/lib/board.kprj.bak"
                                        << "Ignore implementation types in project file" << true << true;
        QTest::newRow("text project") << "/lib/board.ktxt"
                                      << "Ignore implementation types in project file" << true << true;
        QTest::newRow("other") << "/lib/table.csv"
                               << " " << false << false;
    }

    void fileTypeControls()
    {
        QFETCH(QString, path);
        QFETCH(QString, text);
        QFETCH(bool, checkEnabled);
        QFETCH(bool, sourceLine);
        userSettings().setValue(QStringLiteral("General/importpath"), path);
        Fixture fixture;
        QCOMPARE(fixture.widget<QLineEdit>("edtFilePath")->text(), path);
        auto *check = fixture.widget<QCheckBox>("chIncludeMultiple");
        QCOMPARE(check->text(), text);
        QCOMPARE(check->isEnabled(), checkEnabled);
        QCOMPARE(fixture.widget<QSpinBox>("spSrcLine")->isEnabled(), sourceLine);
        QCOMPARE(fixture.widget<QLabel>("lblSrcLine")->isEnabled(), sourceLine);
    }

    void typingChangesTheTextOnly()
    {
        userSettings().setValue(QStringLiteral("General/importpath"), QStringLiteral("/lib/device.xdd"));
        Fixture fixture;
        auto *check = fixture.widget<QCheckBox>("chIncludeMultiple");
        fixture.widget<QLineEdit>("edtFilePath")->setText(QStringLiteral("/lib/objects.codb"));
        QCOMPARE(check->text(), QStringLiteral("Include object copies"));
        fixture.widget<QLineEdit>("edtFilePath")->setText(QStringLiteral("/lib/device.xdd"));
        QCOMPARE(check->text(), QStringLiteral("Import FileInfo && DeviceInfo"));
        QVERIFY(!check->isEnabled());
    }

    void rangeOfTheWizard()
    {
        QCoreApplication::setApplicationName(QStringLiteral("EnergyBus Kestrel Wizard"));
        Fixture fixture;
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        auto *low = fixture.widget<QLineEdit>("edtLow");
        QVERIFY(low->isReadOnly());
        QCOMPARE(low->text() + '-' + fixture.widget<QLineEdit>("edtHigh")->text(),
                 QStringLiteral("0x2000-0x5FFF"));
        QCoreApplication::setApplicationName(QStringLiteral("EnergyBus Kestrel Wizard"));
        fixture.dialog.setExpertMode(true);
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QVERIFY(!low->isReadOnly());
        Fixture other;
        QVERIFY(!other.widget<QLineEdit>("edtLow")->isReadOnly());
    }
};

QTEST_MAIN(TestFileImportDialog)
#include "tst_fileimportdialog.moc"
