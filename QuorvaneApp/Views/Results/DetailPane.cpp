#include "QuorvaneApp/Views/Results/DetailPane.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Results/DependencyFacts.h"
#include "QuorvaneApp/Views/Results/Facts.h"
#include "QuorvaneApp/Views/Results/LicenseTextView.h"
#include "QuorvaneApp/Views/Results/PackageTextEdit.h"
#include "QuorvaneApp/Views/Results/SourcesView.h"

#include <utility>

#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

/// A pane lower than this holds a name of one line, the tabs, and little more.
constexpr int leastLinesForWholeName = 9;

}  // namespace

DetailPane::DetailPane(AppModel& model, LinkOpener openLink, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      header_(new QWidget),
      name_(new Label(Label::Role::heading)),
      version_(new Label(Label::Role::caption)),
      tabs_(new QTabWidget),
      facts_(new DependencyFacts(std::move(openLink), this)),
      licenseText_(new LicenseTextView(this)),
      noticeText_(makePackageTextEdit(QStringLiteral("noticeText"), QStringLiteral("Notice text"))),
      sources_(new SourcesView(model, this)),
      wanted_(facts_) {
    noticeText_->setParent(this);
    showTabs(false, false, false);
    header_->hide();
    setObjectName(QStringLiteral("detailPane"));
    setAccessibleName(QStringLiteral("Details"));
    name_->makeSelectable();
    name_->setAccessibleName(QStringLiteral("Selected package"));
    tabs_->setDocumentMode(true);
    tabs_->setAccessibleName(QStringLiteral("Parts of the details"));
    tabs_->tabBar()->setAccessibleName(QStringLiteral("Parts of the details"));
    tabs_->setUsesScrollButtons(true);
    tabs_->setElideMode(Qt::ElideRight);
    connect(tabs_, &QTabWidget::currentChanged, this, [this] {
        if (!isArranging_) {
            wanted_ = tabs_->currentWidget();
        }
    });

    auto* const header = new QHBoxLayout(header_);
    header->setContentsMargins(14, 10, 14, 0);
    header->setSpacing(10);
    header->addWidget(name_, 1);
    header->addWidget(version_, 0, Qt::AlignBottom);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(8);
    whole->addWidget(header_);
    whole->addWidget(tabs_, 1);
    connect(model_, &AppModel::selectionChanged, this, &DetailPane::showSelection);
    connect(model_, &AppModel::rowsChanged, this, &DetailPane::showSelection);
}

/// Little: below the table it must not take the room that the rows need.
QSize DetailPane::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 4};
}

void DetailPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showName();
}

/// In as many lines as it needs; in one, cut in its middle, where these would leave the details no room, or where it
/// has no place to break.
void DetailPane::showName() {
    if (shown_ == nullptr) {
        return;
    }
    const QString name = Texts::oneLine(Texts::fromUtf8(shown_->name));
    const QMargins margins = header_->layout()->contentsMargins();
    const int room = width() - margins.left() - margins.right() - header_->layout()->spacing() -
                     version_->sizeHint().width();
    const QFontMetrics metrics = name_->fontMetrics();
    const bool isBroken =
        metrics.boundingRect(QRect(0, 0, room, height()), Qt::TextWordWrap, name).width() <= room;
    const bool isTall = height() >= fontMetrics().height() * leastLinesForWholeName;
    name_->setWrapping(isTall && isBroken);
    name_->setText(isTall && isBroken ? name : metrics.elidedText(name, Qt::ElideMiddle, room));
    name_->setToolTip(name_->text() == name ? QString() : Texts::toolTip(name));
    name_->setAccessibleDescription(name);
}

void DetailPane::findInText() {
    if (tabs_->indexOf(licenseText_) >= 0) {
        tabs_->setCurrentWidget(licenseText_);
        licenseText_->startFinding();
    }
}

void DetailPane::showSources() {
    tabs_->setCurrentWidget(sources_);
    sources_->setFocus(Qt::ShortcutFocusReason);
}

void DetailPane::showSelection() {
    const ScanKit::Dependency* const dependency = model_->shownDependency();
    // With each key in the search: what is shown already is not laid out anew.
    if (dependency == shown_ && model_->project() == project_) {
        return;
    }
    shown_ = dependency;
    project_ = model_->project();
    header_->setVisible(dependency != nullptr);
    if (dependency == nullptr) {
        showTabs(false, false, false);
        return;
    }
    const QString version = Texts::oneLine(Texts::fromUtf8(dependency->version));
    version_->setText(version.isEmpty() ? QStringLiteral("No version") : version);
    showName();
    facts_->show(*dependency, Facts::namedIn(*model_->result(), *dependency));
    const QString license = Texts::fromUtf8(dependency->licenseText.value_or(""));
    const QString notice = Texts::fromUtf8(dependency->noticeText.value_or(""));
    licenseText_->setText(license);
    noticeText_->setPlainText(Texts::withoutEndlessLines(notice));
    showTabs(true, !license.isEmpty(), !notice.isEmpty());
}

/// A tab is there only when it holds something; they keep their order.
void DetailPane::showTabs(bool hasPackage, bool hasLicense, bool hasNotice) {
    struct Tab {
        QWidget* view;
        const char* title;
        bool isShown;
    };
    isArranging_ = true;
    int place = 0;
    for (const Tab& tab : {Tab{facts_, "Details", hasPackage}, Tab{licenseText_, "License text", hasLicense},
                           Tab{noticeText_, "Notice", hasNotice}, Tab{sources_, "Project", true}}) {
        const int present = tabs_->indexOf(tab.view);
        if (!tab.isShown) {
            tabs_->removeTab(present);
            tab.view->hide();
        } else if (present < 0) {
            tabs_->insertTab(place, tab.view, QString::fromUtf8(tab.title));
        }
        place += tab.isShown ? 1 : 0;
    }
    tabs_->setCurrentWidget(tabs_->indexOf(wanted_) >= 0 ? wanted_ : tabs_->widget(0));
    isArranging_ = false;
}
