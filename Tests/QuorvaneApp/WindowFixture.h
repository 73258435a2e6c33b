#pragma once

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/MainWindow.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "Tests/QuorvaneApp/AppFixture.h"
#include "Tests/Updates/UpdateFixture.h"

#include <utility>

#include <QAction>
#include <QtTest>

/// The real window over a model whose panels, scans and file manager the test answers.
struct WindowFixture {
    explicit WindowFixture(ScanFunction scan, AppModel::SaveFunction save = ScanKit::saveReports)
        : model(false, {.folderChooser = chooser,
                        .fileRevealer = revealer,
                        .scan = std::move(scan),
                        .save = std::move(save)}),
          commands(model),
          window(model, commands, updater,
                 [this](const QString& address) { openedLinks.push_back(address); }) {
        window.show();
        window.activateWindow();
        isActive = QTest::qWaitForWindowActive(&window);
    }

    /// Opens the fixture's folder and waits for its scan.
    bool open() {
        model.openFolder(project.path());
        return QTest::qWaitFor([this] { return !model.scanning(); });
    }
    template <typename Widget>
    Widget* find(const char* objectName) {
        return window.findChild<Widget*>(QLatin1StringView(objectName));
    }
    /// The visible top-level window of this name, waited for; null when none appears.
    static QWidget* visibleWindow(const char* objectName) {
        QWidget* found = nullptr;
        const bool appeared = QTest::qWaitFor([&] {
            for (QWidget* const top : QApplication::topLevelWidgets()) {
                if (top->isVisible() && top->objectName() == QLatin1StringView(objectName)) {
                    found = top;
                }
            }
            return found != nullptr;
        });
        return appeared ? found : nullptr;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(&window, key, modifiers);
    }

    ProjectFolder project;
    FakeFolderChooser chooser;
    RecordingFileRevealer revealer;
    FakeUpdaterController updater{QUrl(QStringLiteral("https://example.com/feed.xml"))};
    QStringList openedLinks;
    AppModel model;
    AppCommands commands;
    MainWindow window;
    bool isActive = false;
};
