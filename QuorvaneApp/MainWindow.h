#pragma once

#include "MenuKit/MenuBaseline.h"
#include "QuorvaneApp/Model/WindowMemory.h"

#include <functional>

#include <QMainWindow>
#include <QPointer>

class AppCommands;
class AppModel;
class CommandButton;
class DropOverlay;
class EditActions;
class ExportSheet;
class HeaderBar;
class HelpWindow;
class ResultsView;
class SavingStrip;
class SettingsDialog;
class QStackedWidget;
class StatusBar;
class Strip;
class UpdaterController;
class WarningStrip;
class WelcomeView;

/// Joins the model, the commands and the views into the program's one window; takes folders that are
/// dropped on it. Closing it ends a running scan, and waits for reports that are being saved; when they
/// cannot be saved it stays open and says why.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    using LinkOpener = std::function<void(const QString& address)>;

    MainWindow(AppModel& model, AppCommands& commands, UpdaterController& updater, LinkOpener openLink,
               QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* makeContent();
    void placeAtFirst();
    void leadTabs();
    Strip* makeMessageStrip(const QString& objectName, bool isProblem);
    void makeMenu();
    void connectCommands();
    void connectModel();
    void guardClosing();
    void showPage();
    void showMessages();
    void showExportSheet();
    void showSettings();
    void showHelp();
    void showAbout();

    AppModel* model_;
    WindowMemory memory_;
    LinkOpener openLink_;
    AppCommands* commands_;
    UpdaterController* updater_;
    EditActions* edit_;
    HeaderBar* header_;
    Strip* problem_;
    Strip* exportMessage_;
    CommandButton* showReports_;
    WarningStrip* warnings_;
    SavingStrip* saving_;
    StatusBar* statusBar_;
    QStackedWidget* pages_;
    WelcomeView* welcome_;
    ResultsView* results_;
    DropOverlay* dropOverlay_;
    QPointer<ExportSheet> exportSheet_;
    QPointer<SettingsDialog> settings_;
    QPointer<HelpWindow> help_;
    bool closesWhenSaved_ = false;
};
