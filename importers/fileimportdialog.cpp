#include "fileimportdialog.h"

#include "appshell/guihelper.h"
#include "importers/basedataimporter.h"
#include "importers/codbimporter.h"
#include "importers/csvimporter.h"
#include "importers/edsimporter.h"
#include "importers/importerfactory.h"
#include "importers/objectimportrules.h"
#include "store/objectdatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDirIterator>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString energyBusWizard = QStringLiteral("EnergyBus Kestrel Wizard");
const QColor existingObjectColor(255, 25, 25);

struct FileType
{
    const char *completeSuffix;
    const char *checkText;
    bool checkEnabled;
    bool sourceLine;
};

const FileType fileTypes[] = {
    {"codb", QT_TRANSLATE_NOOP("FileImportDialog", "Include object copies"), true, false},
    {"eds", QT_TRANSLATE_NOOP("FileImportDialog", "Import FileInfo && DeviceInfo"), true, false},
    {"dcf", QT_TRANSLATE_NOOP("FileImportDialog", "Import FileInfo && DeviceInfo"), true, false},
    {"xdd", "", false, false},
    {"kprj", QT_TRANSLATE_NOOP("FileImportDialog", "Ignore implementation types in project file"), true,
     true},
    {"ktxt", QT_TRANSLATE_NOOP("FileImportDialog", "Ignore implementation types in project file"), true,
     true},
    {"kprj.bak", QT_TRANSLATE_NOOP("FileImportDialog", "Ignore implementation types in project file"), true,
     true},
};
const FileType otherFileType{"", " ", false, false};

// "kprj.bak" for a project backup, else the last suffix; in lower case.
QString completeSuffix(const QString &path)
{
    const QString lower = path.toLower();
    if (lower.endsWith(QLatin1String(".kprj.bak")))
        return QStringLiteral("kprj.bak");
    return QFileInfo(lower).suffix();
}

const FileType &fileTypeOf(const QString &path)
{
    const QString suffix = completeSuffix(path);
    for (const auto &type : fileTypes) {
        if (suffix == QLatin1String(type.completeSuffix))
            return type;
    }
    return otherFileType;
}

QSettings userSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

const QString importPathKey = QStringLiteral("General/importpath");
const QString startIndexKey = QStringLiteral("General/importstartindex");
const QString endIndexKey = QStringLiteral("General/importendindex");

} // namespace

FileImportDialog::FileImportDialog(QWidget *parent)
    : QDialog(parent)
{
    buildControls();
    fillDatabaseList();
    const QSettings settings = userSettings();
    edtFilePath->setText(settings.value(importPathKey).toString());
    edtLow->setText(settings.value(startIndexKey, QStringLiteral("0x6000")).toString());
    edtHigh->setText(settings.value(endIndexKey, QStringLiteral("0x9FFF")).toString());
    applyFileType(edtFilePath->text());
    setExpertMode(false);
    QMetaObject::connectSlotsByName(this);
}

FileImportDialog::~FileImportDialog() = default;

void FileImportDialog::buildControls()
{
    setWindowTitle(tr("File Import"));
    auto make = [this](auto *widget, const char *name) {
        widget->setObjectName(QLatin1String(name));
        return widget;
    };
    edtFilePath = make(new QLineEdit(this), "edtFilePath");
    cbKPRJ = make(new QComboBox(this), "cbKPRJ");
    btnSelectFile = make(new QPushButton(QStringLiteral("..."), this), "btnSelectFile");
    chIncludeMultiple = make(new QCheckBox(this), "chIncludeMultiple");
    edtLow = make(new QLineEdit(this), "edtLow");
    edtHigh = make(new QLineEdit(this), "edtHigh");
    lblSrcLine =
        make(new QLabel(tr("Source line for import. Only for multi-line KPRJ files."), this), "lblSrcLine");
    spSrcLine = make(new QSpinBox(this), "spSrcLine");
    spSrcLine->setRange(0, 15);
    btnRead = make(new QPushButton(tr("Read data file"), this), "btnRead");
    lbObjects = make(new QListWidget(this), "lbObjects");
    lbObjects->setSelectionMode(QAbstractItemView::ExtendedSelection);
    edtOffset = make(new QLineEdit(QStringLiteral("0x0000"), this), "edtOffset");
    spMaxSub = make(new QSpinBox(this), "spMaxSub");
    spMaxSub->setRange(0, 254);
    spMaxSub->setValue(254);
    cbImplementation = make(new QComboBox(this), "cbImplementation");
    cbImplementation->addItems(
        {tr("Managed Variables"), tr("Application Variables"), tr("keep as in source (csv, kprj)")});
    lblObjCount = make(new QLabel(this), "lblObjCount");
    btnImport = make(new QPushButton(tr("Import"), this), "btnImport");
    btnCancel = make(new QPushButton(tr("Close"), this), "btnCancel");

    auto *fileGroup = new QGroupBox(tr("Select File (eds, dcf, codb, kprj, csv, xdd)"), this);
    auto *fileLayout = new QGridLayout(fileGroup);
    fileLayout->addWidget(edtFilePath, 0, 0, 1, 3);
    fileLayout->addWidget(btnSelectFile, 0, 3);
    fileLayout->addWidget(cbKPRJ, 1, 0, 1, 4);
    fileLayout->addWidget(chIncludeMultiple, 2, 0, 1, 4);
    fileLayout->addWidget(new QLabel(tr("Index range:"), fileGroup), 3, 0);
    fileLayout->addWidget(edtLow, 3, 1);
    fileLayout->addWidget(edtHigh, 3, 2);
    fileLayout->addWidget(lblSrcLine, 4, 0, 1, 3);
    fileLayout->addWidget(spSrcLine, 4, 3);
    fileLayout->addWidget(btnRead, 5, 0, 1, 4);

    auto *options = new QGridLayout;
    options->addWidget(new QLabel(tr("Import index offset:"), this), 0, 0);
    options->addWidget(edtOffset, 0, 1);
    options->addWidget(new QLabel(tr("Highest sub index:"), this), 1, 0);
    options->addWidget(spMaxSub, 1, 1);
    options->addWidget(cbImplementation, 2, 0, 1, 2);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblObjCount, 1);
    buttons->addWidget(btnImport);
    buttons->addWidget(btnCancel);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(fileGroup);
    layout->addWidget(lbObjects, 1);
    layout->addLayout(options);
    layout->addLayout(buttons);
}

void FileImportDialog::fillDatabaseList()
{
    cbKPRJ->addItem(QString());
    QDirIterator catalogues(QStringLiteral(":/codb/"), QDir::Files);
    while (catalogues.hasNext())
        cbKPRJ->addItem(catalogues.next());
    QDirIterator projects(QStringLiteral(":/databases/data/"), QDir::Files);
    while (projects.hasNext()) {
        const QString path = projects.next();
        const QString lower = path.toLower();
        if (lower.endsWith(QLatin1String(".kprj")) && !lower.contains(QLatin1String("j19")) &&
            !lower.contains(QLatin1String("nmea")) && !lower.contains(QLatin1String("ebwiz")))
            cbKPRJ->addItem(path);
    }
}

void FileImportDialog::setProjectStore(ObjectDataBase *store)
{
    project = store;
}

void FileImportDialog::setScratchStore(ObjectDataBase *store)
{
    scratch = store;
}

void FileImportDialog::setLine(quint8 newLine)
{
    line = newLine;
}

void FileImportDialog::setExpertMode(bool expert)
{
    expertMode = expert;
    const bool locked = QCoreApplication::applicationName() == energyBusWizard && !expertMode;
    edtLow->setReadOnly(locked);
    edtHigh->setReadOnly(locked);
    if (locked) {
        edtLow->setText(QStringLiteral("0x2000"));
        edtHigh->setText(QStringLiteral("0x5FFF"));
    }
}

void FileImportDialog::applyFileType(const QString &path)
{
    const FileType &type = fileTypeOf(path);
    chIncludeMultiple->setText(*type.checkText ? tr(type.checkText) : QString());
    chIncludeMultiple->setEnabled(type.checkEnabled);
    lblSrcLine->setEnabled(type.sourceLine);
    spSrcLine->setEnabled(type.sourceLine);
}

void FileImportDialog::on_edtFilePath_textChanged(const QString &path)
{
    chIncludeMultiple->setText(completeSuffix(path) == QLatin1String("codb")
                                   ? tr("Include object copies")
                                   : tr("Import FileInfo && DeviceInfo"));
}

void FileImportDialog::on_cbKPRJ_currentIndexChanged(int row)
{
    if (row <= 0)
        return;
    const QString path = cbKPRJ->itemText(row);
    edtFilePath->setText(path);
    if (!path.isEmpty())
        userSettings().setValue(importPathKey, path);
}

void FileImportDialog::on_btnSelectFile_clicked()
{
    const QString path = GuiHelper::getOpenFileName(
        this, tr("Select file"), edtFilePath->text(),
        tr("CODB Files (*.codb);; EDS Files (*.eds);; XDD Files (1311 only) (*.xdd);; DCF Files (*.dcf);; "
           "Project Files (*.kprj  *.kprj.bak *.ktxt);;CSV Files (*.csv);; ICSV Files (*.icsv)"));
    if (path.isEmpty())
        return;
    edtFilePath->setText(path);
    userSettings().setValue(importPathKey, path);
    applyFileType(path);
}

void FileImportDialog::message(const QString &text, const QString &information)
{
    GuiHelper::showMessageBox(this, QMessageBox::Warning, QCoreApplication::applicationName(), text,
                              information);
}

void FileImportDialog::on_btnRead_clicked()
{
    const QString path = edtFilePath->text();
    const QFileInfo info(path);
    if (!info.isFile() || !info.isReadable()) {
        message(tr("File error"), tr("File %1 is not readable.").arg(path));
        return;
    }
    if (!scratch || !project)
        return;
    scratch->removeNode(ObjectDataBase::ScratchLine);
    scratch->addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());

    const quint32 low = edtLow->text().trimmed().toUInt(nullptr, 0);
    const quint32 high = edtHigh->text().trimmed().toUInt(nullptr, 0);
    QSettings settings = userSettings();
    settings.setValue(startIndexKey, edtLow->text());
    settings.setValue(endIndexKey, edtHigh->text());

    const QString suffix = info.suffix().toLower();
    auto next = ImporterFactory::create(suffix);
    if (!next) {
        message(tr("Format of  %1 is not supported.").arg(path));
        return;
    }
    if (suffix == QLatin1String("csv") || suffix == QLatin1String("icsv"))
        cbImplementation->setCurrentIndex(2);
    if (auto *catalogue = qobject_cast<CODBImporter *>(next.get()))
        catalogue->setObjectCopies(chIncludeMultiple->isChecked());
    if (suffix == QLatin1String("kprj"))
        next->setSourceLine(quint32(spSrcLine->value()));
    importer = std::move(next);
    readPath = path;
    importer->setLine(ObjectDataBase::ScratchLine);
    importer->setDatabase(scratch);
    importer->setIndexRange(low, high);
    importer->setFileName(path);
    lbObjects->clear();
    btnRead->setEnabled(false);
    connect(importer.get(), &BaseDataImporter::progress, this, &FileImportDialog::progressHandler);
    connect(importer.get(), qOverload<const QString &>(&BaseDataImporter::importError), this,
            &FileImportDialog::importErrorString);
    importer->start();
    QTimer::singleShot(500, this, &FileImportDialog::checkProgressNeeded);
}

void FileImportDialog::checkProgressNeeded()
{
    if (!importer || importer->isFinished() || progressWindow)
        return;
    progressWindow = new QProgressDialog(tr("Reading import file..."), QString(), 0, 0, this);
    progressWindow->setWindowModality(Qt::WindowModal);
    progressWindow->setCancelButton(nullptr);
    progressWindow->show();
}

void FileImportDialog::progressHandler(uchar percent)
{
    if (percent != 100)
        return;
    if (progressWindow) {
        progressWindow->close();
        progressWindow->deleteLater();
    }
    btnRead->setEnabled(true);
    listObjects();
}

void FileImportDialog::listObjects()
{
    lbObjects->clear();
    const auto indices = scratch->getIndices(ObjectDataBase::ScratchLine, 0x1000, 0xFFFF);
    int existing = 0;
    for (const quint16 index : indices) {
        auto *item = new QListWidgetItem(QStringLiteral("0x%1 - %2")
                                             .arg(index, 4, 16, QChar('0'))
                                             .arg(scratch->getIndexName(ObjectDataBase::ScratchLine, index)),
                                         lbObjects);
        if (project->indexExists(line, index)) {
            item->setForeground(existingObjectColor);
            ++existing;
        }
    }
    lblObjCount->setText(existing == 0
                             ? tr("%1 objects read.").arg(indices.size())
                             : tr("%1 objects read. (%2 red objects already exist in project. Import "
                                  "overwrites them.)")
                                   .arg(indices.size())
                                   .arg(existing));
}

void FileImportDialog::importErrorString(const QString &text)
{
    GuiHelper::showMessageBox(this, QMessageBox::Critical, tr("Import error"), text);
}

void FileImportDialog::on_btnImport_clicked()
{
    if (!project || !scratch)
        return;
    btnImport->setEnabled(false);
    QList<QListWidgetItem *> selected = lbObjects->selectedItems();
    std::sort(selected.begin(), selected.end(), [this](QListWidgetItem *a, QListWidgetItem *b) {
        return lbObjects->row(a) < lbObjects->row(b);
    });
    const quint32 offset = edtOffset->text().trimmed().toUInt(nullptr, 0);
    const int firstCut = spMaxSub->value() + 1;
    const bool ruleApplies =
        completeSuffix(readPath) != QLatin1String("kprj") || chIncludeMultiple->isChecked();
    static const ObjectImportRules::Implementation rows[] = {ObjectImportRules::Implementation::Managed,
                                                             ObjectImportRules::Implementation::Application,
                                                             ObjectImportRules::Implementation::KeepSource};
    const auto implementation = ruleApplies ? rows[qBound(0, cbImplementation->currentIndex(), 2)]
                                            : ObjectImportRules::Implementation::KeepSource;
    for (const QListWidgetItem *item : std::as_const(selected)) {
        const quint32 index = item->text().section(' ', 0, 0).toUInt(nullptr, 0);
        const quint32 target = index + offset;
        if (target > 0xFFFF)
            continue;
        ObjectImportRules::importObject(*scratch, ObjectDataBase::ScratchLine, quint16(index), *project, line,
                                        quint16(target), implementation, firstCut);
    }
    const QString suffix = QFileInfo(readPath).suffix().toLower();
    if (suffix == QLatin1String("csv"))
        applyCommands();
    if ((suffix == QLatin1String("eds") || suffix == QLatin1String("dcf")) &&
        chIncludeMultiple->isChecked()) {
        EDSImporter descriptions;
        descriptions.setDatabase(project);
        descriptions.setLine(line);
        descriptions.setFileName(readPath);
        descriptions.importDescriptionSections();
    }
    btnImport->setEnabled(true);
    const int row = cbImplementation->currentIndex();
    const QString kind = row == 1   ? tr("application variables")
                         : row == 2 ? tr("original implementation types")
                                    : tr("managed variables");
    lblObjCount->setText(tr("%1 objects imported as %2.").arg(selected.size()).arg(kind));
}

void FileImportDialog::applyCommands()
{
    const auto *table = qobject_cast<CsvImporter *>(importer.get());
    if (!table)
        return;
    QList<CsvObjectRef> copies;
    table->getCopyList(copies);
    for (qsizetype i = 0; i + 1 < copies.size(); i += 2) {
        const CsvObjectRef &target = copies.at(i);
        const CsvObjectRef &source = copies.at(i + 1);
        if (target.wholeObject)
            project->copyIndex(line, source.index, line, target.index);
        else
            project->copySubIndex(line, target.index, source.subIndex, target.subIndex);
    }
    QList<CsvObjectRef> deletions;
    table->getDeleteList(deletions);
    for (const CsvObjectRef &entry : std::as_const(deletions)) {
        if (entry.wholeObject)
            project->removeIndex(line, entry.index);
        else
            project->removeSubIndex(line, entry.index, entry.subIndex);
    }
}

void FileImportDialog::on_btnCancel_clicked()
{
    close();
}
