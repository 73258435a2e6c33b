#pragma once

#include <functional>

#include <QWidget>

class AppModel;
class DependencyFacts;
class Label;
class LicenseTextView;
class QPlainTextEdit;
class QStackedWidget;
class QTabWidget;

/// Everything known of the selected dependency: the facts with flags and notes, and the license and notice
/// texts in views of their own. Says so when nothing is selected.
class DetailPane : public QWidget {
    Q_OBJECT

public:
    using LinkOpener = std::function<void(const QString& address)>;

    /// `openLink` is called with a web address when the user clicks on it.
    DetailPane(AppModel& model, LinkOpener openLink, QWidget* parent = nullptr);

private:
    void showSelection();
    void showTab(QWidget& view, const QString& title, bool isShown);

    AppModel* model_;
    QStackedWidget* pages_;
    Label* name_;
    Label* version_;
    QTabWidget* tabs_;
    DependencyFacts* facts_;
    LicenseTextView* licenseText_;
    QPlainTextEdit* noticeText_;
};
