#pragma once

#include "generation/generatormainhandler.h"
#include "store/objectdatabase.h"

#include <QMainWindow>
#include <QSet>
#include <QStringList>

#include <memory>

class CODBImporter;
class GeneratorCatalog;
class GeneratorOutputForm;
class GUIOutputHandler;
class GUIPostGenProgressHandler;
class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QProgressDialog;
class QToolBox;
class QToolButton;

// The single top-level window: project commands, line selector, pages, and the entry of every batch step.
class KestrelMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit KestrelMainWindow(const QStringList &arguments, QWidget *parent = nullptr);
    ~KestrelMainWindow() override;

    void setProjectDatabase(ObjectDataBase *store);
    void setStandardObjectDatabase(ObjectDataBase *store);
    void updateFormsForLine(quint8 line, bool blockSignals);
    bool openProject(const QString &path);
    void startStandardObjectImport();
    void startStandardObjectImportJ1939();

    QString currentProjectFile() const { return projectFilePath; }
    bool isProjectModified() const;

signals:
    void saveRequest();
    void lineChanged(quint8 line);
    void expertModeChanged(bool expertModeActive);
    void sigInstrumentFunctions(bool enable);

public slots:
    void doThingsAfterStartup();
    void doThingsAfter1Second();
    void importPogress(quint8 percent);
    void on_actionNew_Project_triggered();
    void on_actionOpen_Project_triggered();
    void on_actionSave_Project_triggered();
    void on_actionSave_Project_as_triggered();
    void on_actionClose_Project_triggered();
    void on_actionGenerate_Output_triggered();
    void on_actionQuit_triggered();
    void generatorProgress(quint8 progress);
    void projectModified(ObjectDataBase::ChangeSet modification);
    void handleCheckError(QString errorString);
    void handleLineChanged(int value);
    void updateLinesComboBox();
    void generatorFinished(GeneratorMainHandler::GeneratorResult result);
    void projectCorrectionDone();
    void finishOpenProcedure();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // Result of checkUnsavedChanges.
    enum UnsavedChoice { Save = 1, GoOn = 2, Cancel = 3 };

    void createActions();
    void createMenus();
    void createToolBar();
    void createPages();
    void updateTitle();
    void setProjectModified(bool modified);
    int checkUnsavedChanges();
    QString optionValue(const QString &option) const;
    bool hasOption(const QString &option) const;
    void runEventLoop(int milliseconds);
    // Loads a catalogue of standard objects into line 255 of the standard object store, on its own thread.
    void importStandardObjects(const QString &catalogue);
    QString messageTitle() const;
    void runImportStep();
    void runProjectImportStep();
    void runImportFileStep();
    void runModifierStep();
    void runMerlinStep();
    void addRecentProject(const QString &path);

    QStringList arguments;
    bool noOlderVersionHints = false;
    bool invokedByMerlin = false;
    bool hiddenRun = false;
    bool generateRequested = false;
    bool isJ1939Edition = false;
    bool isCanEdition = false;

    ObjectDataBase *projectStore = nullptr;
    ObjectDataBase *standardObjectStore = nullptr;
    std::unique_ptr<GeneratorCatalog> generatorCatalog;
    std::unique_ptr<CODBImporter> standardObjectImporter;
    GUIOutputHandler *outputHandler = nullptr;
    QSharedPointer<GUIPostGenProgressHandler> progressHandler;
    GeneratorMainHandler *generatorHandler = nullptr;
    GeneratorOutputForm *outputForm = nullptr;
    QProgressDialog *waitDialog = nullptr;

    QString projectDirectory;
    QString projectBaseName = QStringLiteral("newproject");
    QString projectFilePath;
    quint8 currentLine = 0;
    int currentPageIndex = 0;
    QSet<QString> unsavedChanges;

    QToolBox *toolBox = nullptr;
    QComboBox *mpSelectLine = nullptr;
    QToolButton *lineTypeButton = nullptr;
    QLabel *projectLabel = nullptr;

    QAction *actionNew_Project = nullptr;
    QAction *actionOpen_Project = nullptr;
    QAction *actionSave_Project = nullptr;
    QAction *actionSave_Project_as = nullptr;
    QAction *actionEum = nullptr;
    QAction *actionexm = nullptr;
    QAction *actionClose_Project = nullptr;
    QAction *action_Import_File = nullptr;
    QAction *actionGenerate_Output = nullptr;
    QAction *actionQuit = nullptr;
    QAction *actionUndo = nullptr;
    QAction *actionRedo = nullptr;
    QAction *action_Hel_p = nullptr;
    QAction *action_About = nullptr;
    QMenu *recentMenu = nullptr;
};
