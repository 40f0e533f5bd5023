#pragma once

#include <QDialog>
#include <QPointer>

#include <memory>

class BaseDataImporter;
class ObjectDataBase;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressDialog;
class QPushButton;
class QSpinBox;

// Brings objects of a device description, object table or project into the object dictionary of a
// CANopen line in two steps: an importer reads the whole file into the scratch line of a second store,
// the user picks objects from the list, and only these are copied into the active line of the project.
class FileImportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FileImportDialog(QWidget *parent = nullptr);
    ~FileImportDialog() override;

    void setProjectStore(ObjectDataBase *store);
    void setScratchStore(ObjectDataBase *store);
    void setLine(quint8 line);
    // In the EnergyBus wizard the index range is the user's only in expert mode.
    void setExpertMode(bool expert);

public slots:
    void on_btnSelectFile_clicked();
    void on_btnRead_clicked();
    void on_btnImport_clicked();
    void on_btnCancel_clicked();
    void progressHandler(uchar percent);
    void on_edtFilePath_textChanged(const QString &path);
    void checkProgressNeeded();
    void importErrorString(const QString &text);
    void on_cbKPRJ_currentIndexChanged(int row);

private:
    void buildControls();
    void fillDatabaseList();
    // The check box text and which controls work, by the complete suffix of the path.
    void applyFileType(const QString &path);
    void listObjects();
    void applyCommands();
    void message(const QString &text, const QString &information = QString());

    ObjectDataBase *project = nullptr;
    ObjectDataBase *scratch = nullptr;
    quint8 line = 0;
    bool expertMode = false;
    std::unique_ptr<BaseDataImporter> importer;
    QString readPath;
    QPointer<QProgressDialog> progressWindow;

    QLineEdit *edtFilePath = nullptr;
    QComboBox *cbKPRJ = nullptr;
    QPushButton *btnSelectFile = nullptr;
    QCheckBox *chIncludeMultiple = nullptr;
    QLineEdit *edtLow = nullptr;
    QLineEdit *edtHigh = nullptr;
    QLabel *lblSrcLine = nullptr;
    QSpinBox *spSrcLine = nullptr;
    QPushButton *btnRead = nullptr;
    QListWidget *lbObjects = nullptr;
    QLineEdit *edtOffset = nullptr;
    QSpinBox *spMaxSub = nullptr;
    QComboBox *cbImplementation = nullptr;
    QLabel *lblObjCount = nullptr;
    QPushButton *btnImport = nullptr;
    QPushButton *btnCancel = nullptr;
};
