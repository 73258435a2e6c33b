#include "QuorvaneApp/MainWindow.h"

#include "MenuKit/CloseGuard.h"
#include "MenuKit/EditActions.h"
#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Commands/MainMenu.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Strip.h"
#include "QuorvaneApp/Views/Dialogs/AlertWindow.h"
#include "QuorvaneApp/Views/Dialogs/ExportSheet.h"
#include "QuorvaneApp/Views/Dialogs/HelpWindow.h"
#include "QuorvaneApp/Views/Dialogs/SettingsDialog.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/Views/Results/DetailPane.h"
#include "QuorvaneApp/Views/Results/HeaderBar.h"
#include "QuorvaneApp/Views/Results/ProgressStrip.h"
#include "QuorvaneApp/Views/Results/ResultsView.h"
#include "QuorvaneApp/Views/Results/Sidebar.h"
#include "QuorvaneApp/Views/Results/SummaryStrip.h"
#include "QuorvaneApp/Views/Results/WarningStrip.h"
#include "QuorvaneApp/Views/Welcome/DropOverlay.h"
#include "QuorvaneApp/Views/Welcome/DroppedFolder.h"
#include "QuorvaneApp/Views/Welcome/WelcomeView.h"

#include <utility>

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

template <typename Window>
void bringToFront(Window& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

MainWindow::MainWindow(AppModel& model, AppCommands& commands, UpdaterController& updater,
                       LinkOpener openLink, QWidget* parent)
    : QMainWindow(parent),
      model_(&model),
      commands_(&commands),
      updater_(&updater),
      edit_(new EditActions(this)) {
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    setCentralWidget(makeContent(std::move(openLink)));
    dropOverlay_ = new DropOverlay(centralWidget());
    makeMenu();
    connectCommands();
    connectModel();
    guardClosing();
    showPage();
    showMessages();
    // Room for filters, table and details beside each other.
    resize(1280, 800);
}

QWidget* MainWindow::makeContent(LinkOpener openLink) {
    header_ = new HeaderBar(*model_, *commands_);
    problem_ = makeMessageStrip(QStringLiteral("problem"), true);
    exportMessage_ = makeMessageStrip(QStringLiteral("exportMessage"), false);
    welcome_ = new WelcomeView(*commands_->action(Command::openFolder));
    results_ = new ResultsView(*model_, *commands_, std::move(openLink));
    pages_ = new QStackedWidget;
    pages_->addWidget(welcome_);
    pages_->addWidget(results_);

    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (QWidget* const strip : {static_cast<QWidget*>(header_), static_cast<QWidget*>(problem_),
                                 static_cast<QWidget*>(exportMessage_)}) {
        layout->addWidget(strip);
    }
    layout->addWidget(new ProgressStrip(*model_, *commands_->action(Command::cancelScan)));
    layout->addWidget(new WarningStrip(*model_, *commands_));
    layout->addWidget(pages_, 1);
    layout->addWidget(new SummaryStrip(*model_));
    return content;
}

Strip* MainWindow::makeMessageStrip(const QString& objectName, bool isProblem) {
    using Severity = ScanKit::Flag::Severity;
    auto* const strip = new Strip(isProblem ? Severity::high : Severity::low);
    strip->setObjectName(objectName);
    strip->addDismissButton();
    connect(strip, &Strip::dismissed, model_,
            [this, isProblem] { isProblem ? model_->setProblem({}) : model_->setExportMessage({}); });
    return strip;
}

void MainWindow::makeMenu() {
    const MenuBaseline baseline{
        .help = {.appName = QStringLiteral("Quorvane"),
                 .shortcut = QKeySequence::HelpContents,
                 .action = [this] { showHelp(); }},
        .helpItems = {commands_->action(Command::checkForUpdates)},
    };
    fillMainMenu(*menuBar(), *commands_, *edit_, baseline);
}

void MainWindow::connectCommands() {
    const auto on = [this](Command command, auto operation) {
        connect(commands_->action(command), &QAction::triggered, this, operation);
    };
    on(Command::find, [this] { header_->startSearch(); });
    on(Command::sortByResultOrder, [this] { results_->table().sortByResultOrder(); });
    on(Command::settings, [this] { showSettings(); });
    on(Command::about, [this] { showAbout(); });
    on(Command::minimize, [this] { showMinimized(); });
    on(Command::toggleFullScreen, [this](bool isOn) { isOn ? showFullScreen() : showNormal(); });
    on(Command::toggleSidebar, [this](bool isOn) { results_->sidebar().setVisible(isOn); });
    on(Command::toggleDetails, [this](bool isOn) { results_->detailPane().setVisible(isOn); });
    commands_->action(Command::toggleSidebar)->setChecked(true);
    commands_->action(Command::toggleDetails)->setChecked(true);
    connect(header_, &HeaderBar::searchLeft, results_, &ResultsView::goToRows);
}

void MainWindow::connectModel() {
    connect(model_, &AppModel::projectChanged, this, &MainWindow::showPage);
    connect(model_, &AppModel::problemChanged, this, &MainWindow::showMessages);
    connect(model_, &AppModel::exportMessageChanged, this, &MainWindow::showMessages);
    connect(model_, &AppModel::showExportChanged, this, &MainWindow::showExportSheet);
    connect(model_, &AppModel::exportingChanged, this, [this] {
        if (model_->exporting() || !std::exchange(closesWhenSaved_, false)) {
            return;
        }
        // Otherwise the window stays, since it alone can say what went wrong.
        if (!model_->exportFailed()) {
            close();
        }
    });
}

void MainWindow::guardClosing() {
    new CloseGuard(*this, [this] {
        closesWhenSaved_ = model_->exporting();
        return !closesWhenSaved_;
    });
}

void MainWindow::showPage() {
    const bool hasFolder = model_->folder().has_value();
    pages_->setCurrentWidget(hasFolder ? static_cast<QWidget*>(results_) : welcome_);
    header_->setVisible(hasFolder);
    setWindowTitle(hasFolder ? tr("%1 — Quorvane").arg(Texts::shownName(*model_->folder())) : tr("Quorvane"));
}

void MainWindow::showMessages() {
    problem_->setVisible(model_->problem().has_value());
    problem_->setSentence(model_->problem().value_or(QString()));
    exportMessage_->setVisible(model_->exportMessage().has_value());
    exportMessage_->setSentence(model_->exportMessage().value_or(QString()));
}

void MainWindow::showExportSheet() {
    if (!model_->showExport()) {
        return;
    }
    exportSheet_ = new ExportSheet(*model_, this);
    exportSheet_->setAttribute(Qt::WA_DeleteOnClose);
    connect(exportSheet_, &QDialog::finished, this, [this, sheet = exportSheet_.data()](int outcome) {
        model_->setShowExport(false);
        if (outcome == QDialog::Accepted) {
            model_->exportReports(sheet->formats());
        }
    });
    exportSheet_->open();
}

void MainWindow::showSettings() {
    if (settings_.isNull()) {
        settings_ = new SettingsDialog(*model_, *updater_, this);
    }
    bringToFront(*settings_);
}

void MainWindow::showHelp() {
    if (help_.isNull()) {
        help_ = new HelpWindow(this);
    }
    bringToFront(*help_);
}

void MainWindow::showAbout() {
    auto* const about = new AlertWindow(
        tr("Quorvane %1").arg(QCoreApplication::applicationVersion()),
        tr("Lists the open-source licenses of a project’s dependencies. Information, not legal advice."),
        this);
    about->setObjectName(QStringLiteral("about"));
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setWindowTitle(tr("About Quorvane"));
    about->open();
}

/// The program ends with its window and waits for its threads: a scan that is told so now is soon over.
void MainWindow::closeEvent(QCloseEvent* event) {
    model_->cancelScan();
    QMainWindow::closeEvent(event);
}

/// Everything is taken, so that what cannot be opened is refused with a sentence and not with silence.
void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) {
        // Never a move: a file manager that moves would delete the folder afterwards.
        event->setDropAction(Qt::CopyAction);
        event->accept();
        dropOverlay_->appear();
    }
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*) {
    dropOverlay_->hide();
}

void MainWindow::dropEvent(QDropEvent* event) {
    dropOverlay_->hide();
    if (const auto path = droppedPath(*event->mimeData())) {
        model_->openIfFolder(*path);
    } else {
        model_->setProblem(tr("Only one folder at a time can be scanned. Drop one project folder."));
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}
