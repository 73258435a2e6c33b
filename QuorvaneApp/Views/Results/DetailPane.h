#pragma once

#include "ScanKit/Model/Dependency.h"

#include <functional>
#include <memory>

#include <QWidget>

class AppModel;
class DependencyFacts;
class Label;
class LicenseTextView;
class QPlainTextEdit;
class QTabWidget;
class ScannedProject;
class SourcesView;

/// Everything known of the selected dependency, and of the project: the facts with flags and notes, the license and
/// notice texts in views of their own, and what was read. Where nothing is selected, or the filter hides it, the
/// project alone is shown. The part that was looked at last is shown of the next package, too, if it has one.
class DetailPane : public QWidget {
    Q_OBJECT

public:
    using LinkOpener = std::function<void(const QString& address)>;

    /// `openLink` is called with a web address when the user clicks on it.
    DetailPane(AppModel& model, LinkOpener openLink, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    /// Shows the license text, when there is one, with the keys in the field that finds words in it.
    void findInText();
    /// Shows what was read of the project.
    void showSources();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showSelection();
    void showName();
    void showTabs(bool hasPackage, bool hasLicense, bool hasNotice);

    AppModel* model_;
    QWidget* header_;
    Label* name_;
    Label* version_;
    QTabWidget* tabs_;
    DependencyFacts* facts_;
    LicenseTextView* licenseText_;
    QPlainTextEdit* noticeText_;
    SourcesView* sources_;
    std::shared_ptr<const ScannedProject> project_;  ///< that `shown_` is of
    const ScanKit::Dependency* shown_ = nullptr;
    QWidget* wanted_ = nullptr;  ///< the tab that the user chose last
    bool isArranging_ = false;
};
