#include "kestrelmain.h"

#include "edition.h"
#include "kestrelmainwindow.h"

#include "appshell/vorlanbaseapplication.h"
#include "store/objectdatabase.h"

#include <QDebug>
#include <QTimer>

#include <memory>

int kestrelMain(int argc, char **argv, const char *applicationName)
{
    auto application = std::make_unique<VorlanBaseApplication>(argc, argv, QString::fromLatin1(applicationName),
                                                               QStringLiteral(KESTREL_VERSION));
    QCoreApplication::setApplicationName(QString::fromLatin1(applicationName));
    QCoreApplication::setOrganizationName(QStringLiteral("vorlan"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("vorlan.example"));
    application->initSettings(3);
    QApplication::setStartDragTime(100);
    QApplication::setStartDragDistance(10);

    auto projectStore = std::make_unique<ObjectDataBase>();
    auto defaultNode = std::make_unique<NODE_DATA_T>();
    projectStore->createNewDataBase();
    projectStore->addNode(0, *defaultNode);
    const QString lineType = Edition::startLineType(QCoreApplication::applicationName());
    if (!lineType.isEmpty())
        projectStore->setGeneralSetting(QStringLiteral("line0type"), lineType);

    auto standardObjectStore = std::make_unique<ObjectDataBase>();
    standardObjectStore->createNewDataBase();
    standardObjectStore->addNode(0, *defaultNode);
    standardObjectStore->cleanUnusedStrings();

    const QStringList arguments = QCoreApplication::arguments();
    auto window = std::make_unique<KestrelMainWindow>(arguments);
    window->setProjectDatabase(projectStore.get());
    window->setStandardObjectDatabase(standardObjectStore.get());
    window->updateFormsForLine(0, false);
    if (!arguments.contains(QStringLiteral("-hidden")))
        window->show();

    if (arguments.size() >= 2 && arguments.at(1) != QLatin1String("-j1939") &&
        !arguments.at(1).contains(QLatin1String("--"))) {
        window->openProject(arguments.at(1));
        window->startStandardObjectImport();
    } else {
        window->doThingsAfterStartup();
    }

    qRegisterMetaType<ObjectDataBase::ChangeSet>("ObjectDataBase::ChangeSet");
    QTimer::singleShot(0, window.get(), &KestrelMainWindow::doThingsAfter1Second);
    QObject::connect(window.get(), &KestrelMainWindow::sigInstrumentFunctions, application.get(),
                     &VorlanBaseApplication::onInstrumentFunctionChanged);

    qDebug() << Q_FUNC_INFO << "Line:" << __LINE__;
    const int result = QApplication::exec();

    window.reset();
    standardObjectStore.reset();
    defaultNode.reset();
    projectStore.reset();
    application.reset();
    return result;
}
