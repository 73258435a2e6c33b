#include "QuorvaneApp/Views/Results/DetailPane.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Results/DependencyFacts.h"
#include "QuorvaneApp/Views/Results/LicenseTextView.h"
#include "QuorvaneApp/Views/Results/PackageTextEdit.h"
#include "QuorvaneApp/Views/Results/SourcesView.h"

#include <utility>

#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

DetailPane::DetailPane(AppModel& model, LinkOpener openLink, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      pages_(new QStackedWidget),
      name_(new Label(Label::Role::heading)),
      version_(new Label(Label::Role::caption)),
      tabs_(new QTabWidget),
      facts_(new DependencyFacts(std::move(openLink))),
      licenseText_(new LicenseTextView(this)),
      noticeText_(makePackageTextEdit(QStringLiteral("noticeText"), tr("Notice text"))) {
    // Hidden, until they get a tab.
    noticeText_->setParent(this);
    licenseText_->hide();
    noticeText_->hide();
    setObjectName(QStringLiteral("detailPane"));
    setAccessibleName(tr("Details"));
    name_->setWrapping(true);
    name_->makeSelectable();
    name_->setAccessibleName(tr("Selected package"));
    tabs_->setDocumentMode(true);
    tabs_->setAccessibleName(tr("Parts of the details"));
    tabs_->addTab(facts_, tr("Details"));
    tabs_->tabBar()->setAccessibleName(tr("Parts of the details"));

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 10, 0, 0);
    layout->setSpacing(8);
    auto* const header = new QHBoxLayout;
    header->setContentsMargins(14, 0, 14, 0);
    header->setSpacing(10);
    header->addWidget(name_, 1);
    header->addWidget(version_, 0, Qt::AlignBottom);
    layout->addLayout(header);
    layout->addWidget(tabs_, 1);

    pages_->addWidget(new SourcesView(model));
    pages_->addWidget(page);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(pages_);
    connect(model_, &AppModel::selectionChanged, this, &DetailPane::showSelection);
    showSelection();
}

void DetailPane::showSelection() {
    const ScanKit::Dependency* const dependency = model_->selectedDependency();
    pages_->setCurrentIndex(dependency == nullptr ? 0 : 1);
    if (dependency == nullptr) {
        return;
    }
    name_->setText(Texts::oneLine(Texts::fromUtf8(dependency->name)));
    const QString version = Texts::oneLine(Texts::fromUtf8(dependency->version));
    version_->setText(version.isEmpty() ? tr("No version") : version);
    facts_->show(*dependency);
    const QString license = Texts::fromUtf8(dependency->licenseText.value_or(""));
    const QString notice = Texts::fromUtf8(dependency->noticeText.value_or(""));
    licenseText_->setText(license);
    noticeText_->setPlainText(Texts::withoutEndlessLines(notice));
    showTab(*licenseText_, tr("License text"), !license.isEmpty());
    showTab(*noticeText_, tr("Notice"), !notice.isEmpty());
}

/// A tab is there only when it holds something.
void DetailPane::showTab(QWidget& view, const QString& title, bool isShown) {
    const int tab = tabs_->indexOf(&view);
    if (!isShown && tab >= 0) {
        tabs_->removeTab(tab);
        view.hide();
    } else if (isShown && tab < 0) {
        tabs_->addTab(&view, title);
    }
}
