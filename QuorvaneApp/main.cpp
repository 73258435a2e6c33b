#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/MainWindow.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Platform/DialogFolderChooser.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "QuorvaneApp/Platform/UpdaterControllers.h"
#include "QuorvaneApp/Updates/Updater.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Dialogs/DialogUpdatePresenter.h"
#include "ScanKit/Support/AtomicFile.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace {

void describe(QApplication& application) {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("quorvane"));
    application.setWindowIcon(Appearance::applicationIcon());
}

/// The folder named on the command line; empty without one. Ends the program for --help, --version and
/// faults.
QString readArguments(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "Lists the open-source licenses of a project's dependencies."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QCoreApplication::translate("main", "The project folder to open."),
                                 QStringLiteral("[FOLDER]"));
    parser.process(application);
    if (parser.positionalArguments().size() > 1) {
        parser.showHelp(2);
    }
    return parser.positionalArguments().value(0);
}

/// Absent when the program was built without one.
std::optional<QUrl> updateFeed() {
    const QString address = QStringLiteral(QUORVANE_FEED_URL);
    return address.isEmpty() ? std::nullopt : std::optional(QUrl(address));
}

void openLink(const QString& address) {
    QDesktopServices::openUrl(QUrl(address, QUrl::StrictMode));
}

}  // namespace

int main(int argc, char** argv) {
    ScanKit::removeUnfinishedFilesOnSignals();
    QApplication application(argc, argv);
    describe(application);
    const QString folder = readArguments(application);

    DialogFolderChooser folderChooser;
    const std::unique_ptr<FileRevealer> fileRevealer = makeFileRevealer();
    AppModel model(true, {.folderChooser = folderChooser, .fileRevealer = *fileRevealer});
    DialogUpdatePresenter updatePresenter;
    const std::unique_ptr<UpdaterController> updaterController =
        makeUpdaterController(updateFeed(), updatePresenter, QDesktopServices::openUrl);
    Updater updater(*updaterController, updatePresenter);
    AppCommands commands(model, [&updater] { updater.checkForUpdates(); });
    QObject::connect(&updater, &Updater::checkingChanged, &commands,
                     [&] { commands.action(Command::checkForUpdates)->setEnabled(!updater.checking()); });
    MainWindow window(model, commands, *updaterController, openLink);
    folderChooser.setWindow(&window);
    updatePresenter.setWindow(&window);
    window.show();
    if (!folder.isEmpty()) {
        model.openIfFolder(Texts::toPath(QDir(folder).absolutePath()));
    }
    return QApplication::exec();
}
