#pragma once

#include "MenuKit/MenuBaseline.h"

#include <functional>

#include <QMainWindow>
#include <QPointer>

class AppCommands;
class AppModel;
class DropOverlay;
class EditActions;
class ExportSheet;
class HeaderBar;
class HelpWindow;
class ResultsView;
class SettingsDialog;
class QStackedWidget;
class Strip;
class UpdaterController;
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
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* makeContent(LinkOpener openLink);
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
    AppCommands* commands_;
    UpdaterController* updater_;
    EditActions* edit_;
    HeaderBar* header_;
    Strip* problem_;
    Strip* exportMessage_;
    QStackedWidget* pages_;
    WelcomeView* welcome_;
    ResultsView* results_;
    DropOverlay* dropOverlay_;
    QPointer<ExportSheet> exportSheet_;
    QPointer<SettingsDialog> settings_;
    QPointer<HelpWindow> help_;
    bool closesWhenSaved_ = false;
};
