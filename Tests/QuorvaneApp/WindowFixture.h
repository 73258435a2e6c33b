#pragma once

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/MainWindow.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "Tests/QuorvaneApp/AppFixture.h"
#include "Tests/Updates/UpdateFixture.h"

#include <utility>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

/// The words of the visible labels below the widget, with bars between them.
inline QString textOf(const QWidget& widget) {
    QStringList texts;
    for (const QLabel* const label : widget.findChildren<QLabel*>()) {
        if (label->isVisible()) {
            texts.push_back(label->text());
        }
    }
    return texts.join(u'|');
}

/// Makes the desktop's font as large for as long as it lives.
struct LargeFont {
    explicit LargeFont(double points) {
        QFont font = before;
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    ~LargeFont() { QApplication::setFont(before); }
    const QFont before = QApplication::font();
};

/// The real window over a fixture's model, shown and ready for keys.
struct WindowFixture : ModelFixture {
    explicit WindowFixture(ScanFunction scan, AppModel::SaveFunction save = ScanKit::saveReports,
                           bool persist = false)
        : ModelFixture(std::move(scan), std::move(save), persist),
          commands(model),
          window(model, commands, updater,
                 [this](const QString& address) { openedLinks.push_back(address); }) {
        window.show();
        window.activateWindow();
        isActive = QTest::qWaitForWindowActive(&window);
    }

    template <typename Widget = QWidget>
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

    FakeUpdaterController updater{QUrl(u"https://example.com/feed.xml"_s)};
    QStringList openedLinks;
    AppCommands commands;
    MainWindow window;
    bool isActive = false;
};

/// The window's parts that most tests use.
struct ResultsFixture : WindowFixture {
    using WindowFixture::WindowFixture;

    DependencyTable& table = *find<DependencyTable>("dependencyTable");
    QLineEdit& search = *find<QLineEdit>("search");

    /// The names in the table's rows, with blanks between them.
    QString rows() const {
        QStringList names;
        for (int row = 0; row < table.model()->rowCount(); ++row) {
            names.push_back(table.model()->index(row, 0).data().toString());
        }
        return names.join(u' ');
    }
    bool isSelected(int row) const { return table.selectionModel()->isRowSelected(row); }
};
