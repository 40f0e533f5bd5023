#include "kestrelmainwindow.h"

#include "edition.h"
#include "generatorcatalog.h"
#include "generatoroutputform.h"
#include "guioutputhandler.h"
#include "guipostgenprogresshandler.h"

#include "appshell/guihelper.h"
#include "importers/codbimporter.h"
#include "importers/commandlineimport.h"
#include "importers/databasemodifier.h"
#include "importers/importhandler.h"
#include "store/projectconverter.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QStyleFactory>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>

namespace {

// The pages that follow "Common Settings", by line type, with the label of the line type button.
struct LinePages
{
    int type;
    QStringList pages;
    const char *label;
};

const QList<LinePages> &linePages()
{
    static const QList<LinePages> table{
        {1,
         {QStringLiteral("CANopen Stack Settings"), QStringLiteral("CANopen Device Description"),
          QStringLiteral("CANopen Object Dictionary"), QStringLiteral("Generator Output")},
         "CANopen"},
        {2,
         {QStringLiteral("J1939 Configuration"), QStringLiteral("J1939 Signal Definition"),
          QStringLiteral("J1939 PGN Overview"), QStringLiteral("CANopen Object Dictionary"),
          QStringLiteral("Generator Output")},
         "J1939"},
        {4, {QStringLiteral("CAN ID Database"), QStringLiteral("Generator Output")}, "raw CAN"},
        {5,
         {QStringLiteral("CANopen Stack Settings"), QStringLiteral("CANopen Device Description"),
          QStringLiteral("CANopen Object Dictionary"), QStringLiteral("J1939 Configuration"),
          QStringLiteral("J1939 Signal Definition"), QStringLiteral("J1939 PGN Overview"),
          QStringLiteral("Generator Output")},
         "both"},
        {6,
         {QStringLiteral("CANopen Stack Settings"), QStringLiteral("CANopen Device Description"),
          QStringLiteral("CANopen Object Dictionary"), QStringLiteral("CAN ID Database"),
          QStringLiteral("Generator Output")},
         "CANopen + CAN"},
        {7,
         {QStringLiteral("J1939 Configuration"), QStringLiteral("J1939 Signal Definition"),
          QStringLiteral("J1939 PGN Overview"), QStringLiteral("CAN ID Database"), QStringLiteral("Generator Output")},
         "J1939 + CAN"},
    };
    return table;
}

const LinePages *pagesOfType(int type)
{
    for (const auto &entry : linePages()) {
        if (entry.type == type)
            return &entry;
    }
    return nullptr;
}

// Messages for projects of the 3.x versions, by edition and minor version.
QString olderVersionHint(bool canopenEdition, int minor)
{
    if (minor == 7 || minor == 8)
        return canopenEdition ? QObject::tr("This project has been created by an older version. Please add the file "
                                            "co_memcpy.c to your project or makefile.")
                              : QObject::tr("This project has been created by an older version. Please add the file "
                                            "co_memcpy.c and co_mapping.c to your project or makefile.");
    return canopenEdition ? QObject::tr("This project has been created by an older version. Please add the file "
                                        "co_common.c and co_memcpy.c to your project or makefile.")
                          : QObject::tr("This project has been created by an older version. Please add the file "
                                        "co_common.c, co_memcpy.c and co_mapping.c to your project or makefile.");
}

QSettings userSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

} // namespace

KestrelMainWindow::KestrelMainWindow(const QStringList &args, QWidget *parent)
    : QMainWindow(parent)
    , arguments(args)
    , generatorCatalog(std::make_unique<GeneratorCatalog>())
{
    noOlderVersionHints = arguments.contains(QStringLiteral("-now"));
    invokedByMerlin = arguments.contains(QStringLiteral("-mrn"));
    hiddenRun = arguments.contains(QStringLiteral("-hidden"));
    const QString application = QCoreApplication::applicationName();
    isJ1939Edition = Edition::isJ1939(application);
    isCanEdition = Edition::isCan(application);

    setObjectName(QStringLiteral("KestrelMainWindow"));
    if (QStyle *fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        QApplication::setStyle(fusion);
    createActions();
    createMenus();
    createToolBar();
    createPages();

    waitDialog = new QProgressDialog(tr("Generation in progress..."), QString(), 0, 100, this);
    waitDialog->setWindowModality(Qt::WindowModal);
    waitDialog->setCancelButton(nullptr);
    waitDialog->reset();
    waitDialog->hide();

    outputHandler = new GUIOutputHandler(this);
    outputHandler->setLoggingForm(outputForm);
    outputHandler->setEchoToStderr(hiddenRun);
    progressHandler = QSharedPointer<GUIPostGenProgressHandler>::create(this);
    generatorHandler = new GeneratorMainHandler(outputHandler, progressHandler, generatorCatalog.get(), this);
    connect(generatorHandler, &GeneratorMainHandler::finished, this, &KestrelMainWindow::generatorFinished);
    connect(generatorHandler, &GeneratorMainHandler::doneCorrection, this, &KestrelMainWindow::projectCorrectionDone);

    projectLabel = new QLabel(tr("new project"), this);
    statusBar()->addPermanentWidget(projectLabel);

    QSettings settings = userSettings();
    resize(settings.value(QStringLiteral("Geometry/size"), QSize(400, 400)).toSize());
    move(settings.value(QStringLiteral("Geometry/pos"), QPoint(200, 200)).toPoint());
    if (!hiddenRun && settings.value(QStringLiteral("Geometry/maximized"), false).toBool())
        setWindowState(windowState() | Qt::WindowMaximized);
    updateTitle();
    setAcceptDrops(true);
    QMetaObject::connectSlotsByName(this);
}

KestrelMainWindow::~KestrelMainWindow() = default;

void KestrelMainWindow::createActions()
{
    struct ActionEntry
    {
        QAction **target;
        const char *name;
        const char *text;
        QKeySequence shortcut;
    };
    const ActionEntry actionEntries[] = {
        {&actionNew_Project, "actionNew_Project", QT_TR_NOOP("&New Project"), QKeySequence(QStringLiteral("Ctrl+N"))},
        {&actionOpen_Project, "actionOpen_Project", QT_TR_NOOP("&Open Project"), QKeySequence(QStringLiteral("Ctrl+O"))},
        {&actionSave_Project, "actionSave_Project", QT_TR_NOOP("&Save Project"), QKeySequence(QStringLiteral("Ctrl+S"))},
        {&actionSave_Project_as, "actionSave_Project_as", QT_TR_NOOP("Save Project &as"), QKeySequence()},
        {&actionEum, "actionEum", QT_TR_NOOP("&Recent Projects"), QKeySequence()},
        {&actionexm, "actionexm", QT_TR_NOOP("Specify path to protocol stack in settings to list example projects"),
         QKeySequence()},
        {&actionClose_Project, "actionClose_Project", QT_TR_NOOP("&Close Project"), QKeySequence()},
        {&action_Import_File, "action_Import_File", QT_TR_NOOP("&Import File"), QKeySequence()},
        {&actionGenerate_Output, "actionGenerate_Output", QT_TR_NOOP("&Generate Files"),
         QKeySequence(QStringLiteral("Ctrl+G"))},
        {&actionQuit, "actionQuit", QT_TR_NOOP("&Quit"), QKeySequence()},
        {&actionUndo, "actionUndo", QT_TR_NOOP("&Undo"), QKeySequence(QStringLiteral("Ctrl+Z"))},
        {&actionRedo, "actionRedo", QT_TR_NOOP("&Redo"), QKeySequence(QStringLiteral("Ctrl+Shift+Z"))},
        {&action_Hel_p, "action_Hel_p", QT_TR_NOOP("&Help"), QKeySequence()},
        {&action_About, "action_About", QT_TR_NOOP("&About"), QKeySequence(QStringLiteral("Ctrl+A"))},
    };
    for (const auto &entry : actionEntries) {
        auto *action = new QAction(tr(entry.text), this);
        action->setObjectName(QLatin1String(entry.name));
        action->setShortcut(entry.shortcut);
        *entry.target = action;
    }
    actionUndo->setEnabled(false);
    actionRedo->setEnabled(false);
    actionexm->setEnabled(false);
    actionexm->setToolTip(tr("If the path to the stack is specified in the settings dialog, the examples projects "
                             "will be listed here after restart of the tool."));
    recentMenu = new QMenu(tr("&Recent Projects"), this);
    actionEum->setMenu(recentMenu);
}

void KestrelMainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addActions({actionNew_Project, actionOpen_Project, actionSave_Project, actionSave_Project_as, actionEum,
                      actionexm, actionClose_Project});
    file->addSeparator();
    file->addActions({action_Import_File, actionGenerate_Output});
    file->addSeparator();
    file->addAction(actionQuit);
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    edit->addActions({actionUndo, actionRedo});
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addActions({action_Hel_p, action_About});
}

void KestrelMainWindow::createToolBar()
{
    QToolBar *toolBar = addToolBar(tr("Main"));
    toolBar->setObjectName(QStringLiteral("mainToolBar"));
    toolBar->addActions({actionNew_Project, actionOpen_Project, actionSave_Project, actionGenerate_Output});
    toolBar->addSeparator();
    toolBar->addAction(actionQuit);
    mpSelectLine = new QComboBox(this);
    mpSelectLine->setObjectName(QStringLiteral("mpSelectLine"));
    mpSelectLine->setMinimumWidth(mpSelectLine->fontMetrics().horizontalAdvance(QStringLiteral("Line 1 - CANopen")) + 50);
    toolBar->addWidget(mpSelectLine);
    connect(mpSelectLine, &QComboBox::activated, this, [this](int index) {
        handleLineChanged(mpSelectLine->itemData(index).toInt());
    });
    lineTypeButton = new QToolButton(this);
    lineTypeButton->setEnabled(false);
    toolBar->addWidget(lineTypeButton);
}

void KestrelMainWindow::createPages()
{
    toolBox = new QToolBox(this);
    toolBox->setObjectName(QStringLiteral("toolBox"));
    setCentralWidget(toolBox);
    outputForm = new GeneratorOutputForm(this);
    outputForm->setObjectName(QStringLiteral("Generator Output"));
    toolBox->addItem(outputForm, outputForm->objectName());
}

void KestrelMainWindow::setProjectDatabase(ObjectDataBase *store)
{
    projectStore = store;
    connect(store, &ObjectDataBase::updateNotify, this, &KestrelMainWindow::projectModified, Qt::QueuedConnection);
}

void KestrelMainWindow::setStandardObjectDatabase(ObjectDataBase *store)
{
    standardObjectStore = store;
}

void KestrelMainWindow::updateFormsForLine(quint8 line, bool blockSignals)
{
    if (!projectStore)
        return;
    const LinePages *pages =
        pagesOfType(projectStore->getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt());
    if (!pages)
        return;
    const bool wasBlocked = toolBox->blockSignals(blockSignals || toolBox->signalsBlocked());
    const int index = toolBox->currentIndex();
    QList<QWidget *> forms;
    for (int i = toolBox->count() - 1; i >= 0; --i) {
        forms.prepend(toolBox->widget(i));
        toolBox->removeItem(i);
    }
    for (const auto &title : pages->pages) {
        for (QWidget *form : std::as_const(forms)) {
            if (form->objectName() == title) {
                toolBox->addItem(form, title);
                form->setEnabled(true);
            }
        }
    }
    lineTypeButton->setText(QLatin1String(pages->label));
    toolBox->setCurrentIndex(qMin(index, toolBox->count() - 1));
    toolBox->blockSignals(wasBlocked);
}

QString KestrelMainWindow::messageTitle() const
{
    return QCoreApplication::applicationName() + QStringLiteral("  ") + QCoreApplication::applicationVersion();
}

void KestrelMainWindow::updateTitle()
{
    QString title = QStringLiteral("%1 - %2 ").arg(QCoreApplication::organizationName(),
                                                   QCoreApplication::applicationName()) +
                    QCoreApplication::applicationVersion();
    if (!projectFilePath.isEmpty())
        title += QStringLiteral(" - %3").arg(projectBaseName);
    setWindowTitle(title);
}

bool KestrelMainWindow::isProjectModified() const
{
    return projectLabel->font().italic();
}

void KestrelMainWindow::setProjectModified(bool modified)
{
    QFont font = projectLabel->font();
    font.setItalic(modified);
    projectLabel->setFont(font);
    if (!modified)
        unsavedChanges.clear();
}

void KestrelMainWindow::projectModified(ObjectDataBase::ChangeSet modification)
{
    setProjectModified(true);
    unsavedChanges.insert(QStringLiteral("%1/%2/%3/%4/%5/%6/%7/%8")
                              .arg(int(modification.kind))
                              .arg(modification.line)
                              .arg(modification.index)
                              .arg(modification.subindex)
                              .arg(modification.pgn)
                              .arg(modification.spn)
                              .arg(modification.canId)
                              .arg(modification.element));
}

int KestrelMainWindow::checkUnsavedChanges()
{
    if (!isProjectModified() || projectFilePath.isEmpty() || unsavedChanges.isEmpty())
        return GoOn;
    QMessageBox box(QMessageBox::Question, messageTitle(),
                    tr("The current project contains %1 unsaved modifications.").arg(unsavedChanges.size()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setInformativeText(tr("Do you want to save your changes?"));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.standardButton(GuiHelper::execMessageBox(box))) {
    case QMessageBox::Save:
        return Save;
    case QMessageBox::Discard:
        return GoOn;
    default:
        return Cancel;
    }
}

void KestrelMainWindow::doThingsAfterStartup()
{
    QSettings settings = userSettings();
    const QString last = settings.value(QStringLiteral("General/lastproject")).toString();
    if (settings.value(QStringLiteral("General/loadlastproject"), 0).toInt() == 1 && QFile::exists(last))
        openProject(last);
    else
        on_actionNew_Project_triggered();
    if (isJ1939Edition)
        startStandardObjectImportJ1939();
    else
        startStandardObjectImport();
    action_Import_File->setEnabled(true);
    bool onScreen = false;
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        onScreen = onScreen || screen->availableGeometry().contains(pos());
    if (!onScreen)
        move(100, 30);
    mpSelectLine->setCurrentIndex(0);
}

void KestrelMainWindow::startStandardObjectImport()
{
    importStandardObjects(QStringLiteral(":/codb/v301.codb"));
}

void KestrelMainWindow::startStandardObjectImportJ1939()
{
    importStandardObjects(QStringLiteral(":/codb/v302.codb"));
}

void KestrelMainWindow::importStandardObjects(const QString &catalogue)
{
    if (standardObjectImporter)
        standardObjectImporter->wait();
    standardObjectImporter = std::make_unique<CODBImporter>();
    standardObjectStore->removeNode(ObjectDataBase::ScratchLine);
    standardObjectStore->addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
    standardObjectImporter->setLine(ObjectDataBase::ScratchLine);
    standardObjectImporter->setDatabase(standardObjectStore);
    standardObjectImporter->setIndexRange(0x1000, 0x1FFF);
    standardObjectImporter->setFileName(catalogue);
    standardObjectImporter->start();
    connect(standardObjectImporter.get(), &BaseDataImporter::progress, this, &KestrelMainWindow::importPogress);
}

void KestrelMainWindow::importPogress(quint8 percent)
{
    qDebug() << Q_FUNC_INFO << percent;
}

QString KestrelMainWindow::optionValue(const QString &option) const
{
    const qsizetype at = arguments.indexOf(option);
    return at >= 0 && at + 1 < arguments.size() ? arguments.at(at + 1) : QString();
}

bool KestrelMainWindow::hasOption(const QString &option) const
{
    return arguments.contains(option);
}

void KestrelMainWindow::runEventLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void KestrelMainWindow::doThingsAfter1Second()
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    runImportStep();
    runProjectImportStep();
    runImportFileStep();
    runModifierStep();
    if (hasOption(QStringLiteral("-mrn")))
        runMerlinStep();
    if (hasOption(QStringLiteral("-s"))) {
        on_actionSave_Project_triggered();
        runEventLoop(300);
    }
    if (hasOption(QStringLiteral("-g"))) {
        generateRequested = true;
        on_actionGenerate_Output_triggered();
        runEventLoop(500);
        QCoreApplication::exit(0);
    }
    if (isJ1939Edition)
        action_Hel_p->setVisible(false);
}

void KestrelMainWindow::runImportStep()
{
    const QString path = optionValue(QStringLiteral("-i"));
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return;
    qDebug() << "try to import " << path;
    if (CommandLineImport::run(*projectStore, path))
        runEventLoop(500);
}

void KestrelMainWindow::runProjectImportStep()
{
    const QString path = optionValue(QStringLiteral("-j"));
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return;
    auto other = std::make_unique<ObjectDataBase>();
    if (other->openDataBase(path)) {
        const auto lines = projectStore->getLines();
        for (const quint8 line : lines) {
            if (line >= 32)
                continue;
            projectStore->copyPGNs(*other, line, line, 0, 0x3FFFF, Direction::Receive);
            projectStore->copyPGNs(*other, line, line, 0, 0x3FFFF, Direction::Transmit);
        }
    }
    runEventLoop(200);
}

void KestrelMainWindow::runImportFileStep()
{
    if (!hasOption(QStringLiteral("--importfile")))
        return;
    const QString path = optionValue(QStringLiteral("--importfile"));
    qDebug() << "Import Handler file: " << path;
    if (!QFileInfo(path).isFile()) {
        qDebug() << "Import Handler file: " << path << "does not exist";
        return;
    }
    ImportHandler handler(projectStore);
    if (!handler.setImportFile(path) || !handler.applyImportFile())
        qDebug() << "Import Handler file error: " << handler.errorText();
}

void KestrelMainWindow::runModifierStep()
{
    const QString path = optionValue(QStringLiteral("-dbmod"));
    if (path.isEmpty())
        return;
    DatabaseModifier modifier(projectStore);
    if (!modifier.setModifierFile(path) || !modifier.applyModifierFile())
        qDebug() << Q_FUNC_INFO << modifier.errorText();
}

void KestrelMainWindow::runMerlinStep()
{
    runEventLoop(500);
    invokedByMerlin = true;
    for (QAction *action : {actionNew_Project, actionOpen_Project, actionClose_Project, actionEum})
        action->setEnabled(false);
    if (!hasOption(QStringLiteral("-g")))
        actionGenerate_Output->setEnabled(false);
    const int nodeId = projectStore->getGeneralSetting(QStringLiteral("co_node_id")).toInt();
    const int networkId = projectStore->getGeneralSetting(QStringLiteral("co_network_id")).toInt();
    QString title = QStringLiteral("vorlan field systems - CANopen Kestrel ") + QCoreApplication::applicationVersion() +
                    QStringLiteral(" invoked by CANopen Merlin for Node ") + QString::number(nodeId);
    if (networkId != 0)
        title += QStringLiteral(" (network %1)").arg(networkId);
    setWindowTitle(title);
}

bool KestrelMainWindow::openProject(const QString &path)
{
    qDebug() << Q_FUNC_INFO << path;
    mpSelectLine->setCurrentIndex(0);
    currentLine = 0;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    bool opened = false;
    if (absolute.endsWith(QLatin1String("ktxt"))) {
        opened = projectStore->loadTextDatabase(absolute);
    } else if (absolute.endsWith(QLatin1String("kprj"))) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        opened = projectStore->openDataBase(absolute);
        QApplication::restoreOverrideCursor();
    }
    if (!opened) {
        GuiHelper::showMessageBox(this, QMessageBox::Critical, messageTitle(),
                                  tr("Cannot open project file %1.").arg(path), projectStore->lastError());
        return false;
    }
    if (!invokedByMerlin && projectStore->isExternallyModified()) {
        const auto answer = GuiHelper::showMessageBox(
            this, QMessageBox::Warning, QCoreApplication::applicationName(),
            tr("This project file has been modified outside of the tool."),
            tr("The modification has been recorded in the project file.\n\nOpen the project anyway?"),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
        if (answer == QMessageBox::No) {
            on_actionNew_Project_triggered();
            return false;
        }
    }

    const QString application = QCoreApplication::applicationName();
    ProjectConverter::convert(projectStore, application);
    const QStringList version = projectStore->getMiscSetting(QStringLiteral("SaveToolVersion")).split('.');
    if (!Edition::isEnergyBusWizard(application) && version.first() == QLatin1String("3")) {
        const int minor = version.value(1).toInt();
        if (minor < 9 && !noOlderVersionHints) {
            GuiHelper::showMessageBox(this, QMessageBox::Information, messageTitle(),
                                      olderVersionHint(Edition::isCANopen(application), minor));
            projectStore->setMiscSetting(QStringLiteral("PreviousToolVersion"), version.join('.'));
        }
        const QString backup = absolute + QStringLiteral(".bak_v3");
        if (!invokedByMerlin && !QFile::exists(backup)) {
            QFile::copy(absolute, backup);
            GuiHelper::showMessageBox(
                this, QMessageBox::Information, messageTitle(),
                tr("The project had been created using V3.x of the tool. A copy has been saved as %1.\n\n").arg(backup) +
                    tr(" In order to use the current project %1 with this version of Kestrel, make sure to use the "
                       "corresponding stack version.")
                        .arg(QFileInfo(absolute).fileName()));
        }
    }

    const QFileInfo info(absolute);
    projectDirectory = info.absolutePath();
    projectBaseName = info.completeBaseName();
    projectFilePath = absolute;
    projectLabel->setText(absolute);
    updateTitle();
    QSettings settings = userSettings();
    settings.setValue(QStringLiteral("General/projectpath"), projectDirectory);
    settings.setValue(QStringLiteral("General/lastproject"), absolute);
    addRecentProject(absolute);
    projectStore->setGeneralSetting(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    updateLinesComboBox();
    updateFormsForLine(0, true);
    QTimer::singleShot(5, this, &KestrelMainWindow::finishOpenProcedure);
    return true;
}

void KestrelMainWindow::finishOpenProcedure()
{
    setProjectModified(false);
}

void KestrelMainWindow::addRecentProject(const QString &path)
{
    QSettings settings = userSettings();
    settings.beginGroup(QStringLiteral("RecentProjects"));
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    int slot = -1;
    int oldest = 0;
    qint64 oldestTime = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 10; ++i) {
        const QString stored = settings.value(QStringLiteral("project%1path").arg(i)).toString();
        const qint64 time = settings.value(QStringLiteral("project%1time").arg(i), 0).toLongLong();
        if (stored == path || stored.isEmpty()) {
            slot = i;
            break;
        }
        if (time < oldestTime) {
            oldestTime = time;
            oldest = i;
        }
    }
    if (slot < 0)
        slot = oldest;
    settings.setValue(QStringLiteral("project%1path").arg(slot), path);
    settings.setValue(QStringLiteral("project%1time").arg(slot), now);
}

void KestrelMainWindow::on_actionNew_Project_triggered()
{
    if (checkUnsavedChanges() == Cancel)
        return;
    const QString application = QCoreApplication::applicationName();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool opened = projectStore->openDataBase(Edition::templatePath(application));
    projectStore->setMiscSetting(QStringLiteral("CreateToolVersion"), QCoreApplication::applicationVersion());
    updateLinesComboBox();
    if (!opened) {
        QApplication::restoreOverrideCursor();
        GuiHelper::showMessageBox(this, QMessageBox::Critical, messageTitle(), tr("Cannot create new project file."));
        return;
    }
    projectStore->setProjectPath(QString());
    projectDirectory.clear();
    projectFilePath.clear();
    projectBaseName = QStringLiteral("newproject");
    projectLabel->setText(tr("new project"));
    mpSelectLine->setCurrentIndex(0);
    currentLine = 0;
    updateTitle();
    QString lineType = projectStore->getGeneralSetting(QStringLiteral("line0type"));
    if (Edition::isCANopen(application))
        lineType = QStringLiteral("1");
    else if (isJ1939Edition)
        lineType = QStringLiteral("2");
    projectStore->setGeneralSetting(QStringLiteral("line0type"), lineType);
    updateFormsForLine(0, true);
    projectStore->setGeneralSetting(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    QApplication::restoreOverrideCursor();
    QTimer::singleShot(5, this, &KestrelMainWindow::finishOpenProcedure);
}

void KestrelMainWindow::on_actionOpen_Project_triggered()
{
    const int choice = checkUnsavedChanges();
    if (choice == Cancel)
        return;
    if (choice == Save)
        on_actionSave_Project_triggered();
    const QString name = GuiHelper::getOpenFileName(
        this, tr("Open Project"), userSettings().value(QStringLiteral("General/projectpath"), QStringLiteral("~")).toString(),
        tr("KCO Projects (*.kprj);;old project files (*.db);;KTXT Projects (*.ktxt)"));
    if (name.isEmpty())
        return;
    if (openProject(name))
        outputForm->clearLogging();
}

void KestrelMainWindow::on_actionSave_Project_triggered()
{
    if (projectDirectory.isEmpty()) {
        on_actionSave_Project_as_triggered();
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool saved = projectStore->saveDatabase();
    QApplication::restoreOverrideCursor();
    if (!saved) {
        GuiHelper::showMessageBox(this, QMessageBox::Critical, messageTitle(), tr("Cannot save project file."));
        return;
    }
    // The stamps of the save itself arrive as queued notifications; they are no change of the user.
    QTimer::singleShot(5, this, &KestrelMainWindow::finishOpenProcedure);
}

void KestrelMainWindow::on_actionSave_Project_as_triggered()
{
    const QString name = GuiHelper::getSaveFileName(
        this, tr("Save Project"), userSettings().value(QStringLiteral("General/projectpath"), QStringLiteral("~")).toString(),
        tr("KCO Projects (*.kprj);;KTXT Projects (*.ktxt)"));
    if (name.isEmpty())
        return;
    if (!projectStore->saveDatabase(name)) {
        GuiHelper::showMessageBox(this, QMessageBox::Critical, messageTitle(), tr("Cannot save project file."));
        return;
    }
    const QFileInfo info(name);
    projectDirectory = info.absolutePath();
    projectBaseName = info.completeBaseName();
    projectFilePath = info.absoluteFilePath();
    QSettings settings = userSettings();
    settings.setValue(QStringLiteral("General/projectpath"), projectDirectory);
    settings.setValue(QStringLiteral("General/lastproject"), projectFilePath);
    projectLabel->setText(projectFilePath);
    updateTitle();
    addRecentProject(projectFilePath);
    QTimer::singleShot(5, this, &KestrelMainWindow::finishOpenProcedure);
}

void KestrelMainWindow::on_actionClose_Project_triggered()
{
    on_actionNew_Project_triggered();
}

void KestrelMainWindow::on_actionGenerate_Output_triggered()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    toolBox->setCurrentWidget(outputForm);
    runEventLoop(200);
    emit sigInstrumentFunctions(true);
    if (!hiddenRun) {
        waitDialog->setLabelText(tr("Generation in progress..."));
        waitDialog->show();
        waitDialog->raise();
    }
    QSettings settings = userSettings();
    if (settings.value(QStringLiteral("General/clearlogging"), true).toBool())
        outputForm->clearLogging();
    const bool disableCheck = settings.value(QStringLiteral("General/disablecheck"), false).toBool();
    if (quint8(projectStore->getGeneralSetting(QStringLiteral("ask_gen_srdo")).toUInt()) != 0) {
        const auto answer = GuiHelper::showMessageBox(this, QMessageBox::Question, messageTitle(),
                                                      tr("Do you want to generate gen_srdo.c?"),
                                                      QString(), QMessageBox::Yes | QMessageBox::No);
        generatorHandler->setGenerateSrdo(answer != QMessageBox::No);
    }
    generatorHandler->setProject(projectStore, projectDirectory, projectBaseName);
    generatorHandler->setHiddenRun(hiddenRun);
    generatorHandler->setSkipEdsCheck(isJ1939Edition);
    generatorHandler->setSpecialVirtualObjects(
        projectStore->getGeneralSetting(QStringLiteral("special_virtual_objects")).toUInt() != 0);
    projectStore->blockSignals(true);
    generatorHandler->generate(disableCheck);
}

void KestrelMainWindow::generatorFinished(GeneratorMainHandler::GeneratorResult result)
{
    emit sigInstrumentFunctions(false);
    waitDialog->hide();
    projectStore->blockSignals(false);
    QApplication::restoreOverrideCursor();
    if (result == GeneratorMainHandler::CheckFailed) {
        show();
        GuiHelper::showMessageBox(this, QMessageBox::Critical, messageTitle(),
                                  tr("The project contains critical errors. Check Generator Output window."));
    }
}

void KestrelMainWindow::projectCorrectionDone()
{
    qDebug() << Q_FUNC_INFO;
    if (!generateRequested || hasOption(QStringLiteral("-s")))
        on_actionSave_Project_triggered();
}

void KestrelMainWindow::generatorProgress(quint8 progress)
{
    waitDialog->setValue(progress);
}

void KestrelMainWindow::handleCheckError(QString errorString)
{
    outputHandler->output(errorString);
}

void KestrelMainWindow::updateLinesComboBox()
{
    if (!projectStore)
        return;
    static const QMap<int, QString> typeLabels{{1, QStringLiteral("CANopen")}, {2, QStringLiteral("J1939")},
                                               {4, QStringLiteral("raw CAN")}, {5, QStringLiteral("both")},
                                               {6, QStringLiteral("CANopen + CAN")},
                                               {7, QStringLiteral("J1939 + CAN")}};
    const QString application = QCoreApplication::applicationName();
    mpSelectLine->clear();
    const auto lines = projectStore->getLines();
    for (const quint8 line : lines) {
        if (line >= ObjectDataBase::ClipboardLine)
            continue;
        QString label = typeLabels.value(projectStore->getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt());
        if (isJ1939Edition)
            label = QStringLiteral("J1939");
        else if (Edition::isCANopen(application))
            label = QStringLiteral("CANopen");
        else if (Edition::isEnergyBusWizard(application))
            label = QStringLiteral("EnergyBus");
        mpSelectLine->addItem(tr("Line %1 - %2").arg(line).arg(label), line);
    }
    mpSelectLine->addItem(tr("Add empty line"), 255);
    mpSelectLine->addItem(tr("Duplicate last line"), 253);
    mpSelectLine->addItem(tr("Delete last line"), 254);
    if (isCanEdition)
        mpSelectLine->addItem(tr("Change Line Type"), 252);
}

void KestrelMainWindow::handleLineChanged(int value)
{
    if (value < 240) {
        currentLine = quint8(value);
        updateFormsForLine(currentLine, false);
        emit lineChanged(currentLine);
    }
}

void KestrelMainWindow::on_actionQuit_triggered()
{
    const int choice = checkUnsavedChanges();
    if (choice == Cancel)
        return;
    if (choice == Save)
        on_actionSave_Project_triggered();
    QSettings settings = userSettings();
    settings.setValue(QStringLiteral("Geometry/size"), size());
    settings.setValue(QStringLiteral("Geometry/pos"), pos());
    settings.setValue(QStringLiteral("Geometry/maximized"), isMaximized());
    QCoreApplication::quit();
}

void KestrelMainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    on_actionQuit_triggered();
}
