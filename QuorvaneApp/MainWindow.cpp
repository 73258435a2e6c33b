#include "QuorvaneApp/MainWindow.h"

#include "MenuKit/CloseGuard.h"
#include "MenuKit/EditActions.h"
#include "MenuKit/ShortcutPriority.h"
#include "MenuKit/TabOrder.h"
#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Commands/MainMenu.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Model/WebLink.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/Strip.h"
#include "QuorvaneApp/Views/Dialogs/AlertWindow.h"
#include "QuorvaneApp/Views/Dialogs/ExportSheet.h"
#include "QuorvaneApp/Views/Dialogs/HelpWindow.h"
#include "QuorvaneApp/Views/Dialogs/SettingsDialog.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/Views/Results/DetailPane.h"
#include "QuorvaneApp/Views/Results/HeaderBar.h"
#include "QuorvaneApp/Views/Results/ResultsView.h"
#include "QuorvaneApp/Views/Results/RowCount.h"
#include "QuorvaneApp/Views/Results/SavingStrip.h"
#include "QuorvaneApp/Views/Results/Sidebar.h"
#include "QuorvaneApp/Views/Results/SortCommands.h"
#include "QuorvaneApp/Views/Results/StatusBar.h"
#include "QuorvaneApp/Views/Results/WarningStrip.h"
#include "QuorvaneApp/Views/Welcome/DropOverlay.h"
#include "QuorvaneApp/Views/Welcome/DroppedFolder.h"
#include "QuorvaneApp/Views/Welcome/WelcomeView.h"
#include "QuorvaneApp/WindowSizes.h"

#include <utility>

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
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
      memory_(model.persist()),
      openLink_(std::move(openLink)),
      commands_(&commands),
      updater_(&updater),
      edit_(new EditActions(this)) {
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    setCentralWidget(makeContent());
    dropOverlay_ = new DropOverlay(centralWidget());
    makeMenu();
    connectCommands();
    connectModel();
    guardClosing();
    showPage();
    showMessages();
    placeAtFirst();
}

/// As it was left; else as large as is of use and the screen has room for.
void MainWindow::placeAtFirst() {
    const WindowSizes sizes = WindowSizes::fitting(screen()->availableSize());
    setMinimumSize(sizes.least);
    if (!restoreGeometry(memory_.remembered(WindowMemory::Part::geometry))) {
        resize(sizes.first);
    }
}

QWidget* MainWindow::makeContent() {
    header_ = new HeaderBar(*model_, *commands_);
    problem_ = makeMessageStrip(QStringLiteral("problem"), true);
    problem_->addDismissButton();
    exportMessage_ = makeMessageStrip(QStringLiteral("exportMessage"), false);
    showReports_ = new CommandButton(*commands_->action(Command::showReports));
    exportMessage_->addButton(*showReports_);
    exportMessage_->addDismissButton();
    warnings_ = new WarningStrip(*model_, *commands_);
    saving_ = new SavingStrip(*model_);
    welcome_ = new WelcomeView(*model_, *commands_->action(Command::openFolder));
    results_ = new ResultsView(*model_, *commands_, openLink_);
    statusBar_ = new StatusBar(*model_, *commands_);
    connect(&results_->table(), &DependencyTable::selectedCountChanged, this,
            [this] { statusBar_->rowCount().setSelectedCount(results_->table().selectedCount()); });
    pages_ = new QStackedWidget;
    pages_->addWidget(welcome_);
    pages_->addWidget(results_);

    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (QWidget* const strip : {static_cast<QWidget*>(header_), static_cast<QWidget*>(problem_),
                                 static_cast<QWidget*>(exportMessage_), static_cast<QWidget*>(warnings_)}) {
        layout->addWidget(strip);
    }
    layout->addWidget(pages_, 1);
    // What comes and goes does so here: the rows stay where they are.
    layout->addWidget(saving_);
    layout->addWidget(statusBar_);
    return content;
}

/// As the parts stand in the window, with the headings before the rows that they head.
void MainWindow::leadTabs() {
    TabOrder::lead({header_, problem_, exportMessage_, warnings_, welcome_, &results_->sidebar(),
                    results_->table().horizontalHeader(), &results_->table(), &results_->detailPane(),
                    saving_, statusBar_});
}

Strip* MainWindow::makeMessageStrip(const QString& objectName, bool isProblem) {
    using Severity = ScanKit::Flag::Severity;
    auto* const strip = new Strip(isProblem ? Severity::high : Severity::low);
    strip->setObjectName(objectName);
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
    fillMainMenu(*menuBar(), *model_, *commands_, *edit_, baseline);
    QList<QAction*> shortcuts = commands_->findChildren<QAction*>();
    for (const char* const name : {"closeWindow", "help"}) {
        shortcuts += menuBar()->findChildren<QAction*>(QLatin1StringView(name));
    }
    new ShortcutPriority(*this, {shortcuts.begin(), shortcuts.end()});
}

void MainWindow::connectCommands() {
    const auto on = [this](Command command, auto operation) {
        connect(commands_->action(command), &QAction::triggered, this, operation);
    };
    on(Command::find, [this] { header_->startSearch(); });
    on(Command::findInText, [this] {
        commands_->action(Command::toggleDetails)->setChecked(true);
        results_->detailPane().findInText();
    });
    on(Command::showSources, [this] {
        commands_->action(Command::toggleDetails)->setChecked(true);
        results_->detailPane().showSources();
    });
    on(Command::openSource, [this] {
        const ScanKit::Dependency* const shown = model_->shownDependency();
        if (const auto address = shown == nullptr ? std::nullopt : webLink(shown->source)) {
            openLink_(*address);
        }
    });
    on(Command::fitColumns, [this] { results_->table().fitColumns(); });
    connectSorting(*commands_, results_->table());
    on(Command::settings, [this] { showSettings(); });
    on(Command::about, [this] { showAbout(); });
    on(Command::minimize, [this] { showMinimized(); });
    on(Command::toggleFullScreen, [this](bool isOn) { isOn ? showFullScreen() : showNormal(); });
    for (const auto& [command, part] :
         {std::pair{Command::toggleSidebar, static_cast<QWidget*>(&results_->sidebar())},
          {Command::toggleDetails, static_cast<QWidget*>(&results_->detailPane())}}) {
        commands_->action(command)->setChecked(true);
        connect(commands_->action(command), &QAction::toggled, part, &QWidget::setVisible);
    }
    connect(header_, &HeaderBar::searchLeft, results_, &ResultsView::goToRows);
}

void MainWindow::connectModel() {
    connect(model_, &AppModel::projectChanged, this, &MainWindow::showPage);
    connect(model_, &AppModel::problemChanged, this, &MainWindow::showMessages);
    connect(model_, &AppModel::exportMessageChanged, this, &MainWindow::showMessages);
    connect(model_, &AppModel::showExportChanged, this, &MainWindow::showExportSheet);
    // After the views, which fill their parts anew.
    for (const auto changed : {&AppModel::projectChanged, &AppModel::selectionChanged,
                               &AppModel::warningsChanged, &AppModel::recentProjectsChanged}) {
        connect(model_, changed, this, &MainWindow::leadTabs);
    }
    leadTabs();
    connect(model_, &AppModel::exportingChanged, this, [this] {
        if (model_->exporting() || !std::exchange(closesWhenSaved_, false)) {
            return;
        }
        saving_->setClosing(false);
        // Otherwise the window stays, since it alone can say what went wrong.
        if (!model_->exportFailed()) {
            close();
        }
    });
}

void MainWindow::guardClosing() {
    new CloseGuard(*this, [this] {
        closesWhenSaved_ = model_->exporting();
        saving_->setClosing(closesWhenSaved_);
        return !closesWhenSaved_;
    });
}

void MainWindow::showPage() {
    const bool hasFolder = model_->folder().has_value();
    pages_->setCurrentWidget(hasFolder ? static_cast<QWidget*>(results_) : welcome_);
    header_->setVisible(hasFolder);
    if (hasFolder && model_->result() == nullptr) {
        results_->awaitRows();
    }
    setWindowTitle(hasFolder ? QStringLiteral("%1 — Quorvane").arg(Texts::shownName(*model_->folder()))
                             : QStringLiteral("Quorvane"));
}

void MainWindow::showMessages() {
    problem_->setVisible(model_->problem().has_value());
    problem_->setSentence(model_->problem().value_or(QString()));
    using Severity = ScanKit::Flag::Severity;
    exportMessage_->setSeverity(model_->exportFailed() ? Severity::high : Severity::low);
    showReports_->setVisible(!model_->exportFailed());
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
        QStringLiteral("Quorvane %1").arg(QCoreApplication::applicationVersion()),
        QStringLiteral(
            "Lists the open-source licenses of a project’s dependencies. Information, not legal advice."),
        this);
    about->setObjectName(QStringLiteral("about"));
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setWindowTitle(QStringLiteral("About Quorvane"));
    about->open();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    warnings_->setWindowHeight(height());
}

/// The program ends with its window and waits for its threads: a scan that is told so now is soon over.
void MainWindow::closeEvent(QCloseEvent* event) {
    memory_.save(WindowMemory::Part::geometry, saveGeometry());
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
        model_->setProblem(
            QStringLiteral("Only one folder at a time can be scanned. Drop one project folder."));
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}
