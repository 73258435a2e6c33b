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

#include <algorithm>
#include <array>
#include <string_view>

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QUrl>

namespace {

void describeProgram() {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION));
}

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Lists the open-source licenses of a project's dependencies."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("The project folder to open."),
                                 QStringLiteral("[FOLDER]"));
}

/// Whether the arguments ask for words alone. These are answered where there is no screen, too, and a program
/// with windows could not even begin there.
bool asksForWords(int argc, char** argv) {
    constexpr std::array<std::string_view, 5> words{"-v", "--version", "-h", "--help", "--help-all"};
    return std::any_of(argv + 1, argv + argc, [&](const char* argument) {
        return std::ranges::find(words, argument) != words.end();
    });
}

/// Ends the program.
void answerInWords(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    describeProgram();
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);
}

/// The folder named on the command line; empty without one. Ends the program for faults.
QString readArguments(const QApplication& application) {
    QCommandLineParser parser;
    describe(parser);
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
    if (asksForWords(argc, argv)) {
        answerInWords(argc, argv);
    }
    ScanKit::removeUnfinishedFilesOnSignals();
    QApplication application(argc, argv);
    describeProgram();
    QGuiApplication::setDesktopFileName(QStringLiteral("quorvane"));
    QApplication::setWindowIcon(Appearance::applicationIcon());
    const QString folder = readArguments(application);

    DialogFolderChooser folderChooser;
    const std::unique_ptr<FileRevealer> fileRevealer = makeFileRevealer();
    AppModel model(true, {.folderChooser = folderChooser, .fileRevealer = *fileRevealer});
    if (!folder.isEmpty()) {
        model.openIfFolder(Texts::toPath(QDir(folder).absolutePath()));
    }
    DialogUpdatePresenter updatePresenter;
    const std::unique_ptr<UpdaterController> updaterController =
        makeUpdaterController(updateFeed(), updatePresenter, QDesktopServices::openUrl);
    Updater updater(*updaterController, updatePresenter);
    AppCommands commands(model, [&updater] { updater.checkForUpdates(); });
    QObject::connect(&updater, &Updater::checkingChanged, &commands,
                     [&] { commands.action(Command::checkForUpdates)->setEnabled(!updater.checking()); });
    // By now the disk has mostly said that the folder is one, so that it is scanned while the window is made.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    MainWindow window(model, commands, *updaterController, openLink);
    folderChooser.setWindow(&window);
    updatePresenter.setWindow(&window);
    window.show();
    return QApplication::exec();
}
