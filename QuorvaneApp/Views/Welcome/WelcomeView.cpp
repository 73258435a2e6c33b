#include "QuorvaneApp/Views/Welcome/WelcomeView.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Welcome/RecentList.h"

#include <QAction>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int margin = 24;
constexpr int tightMargin = 8;
constexpr int cornerRadius = 16;
constexpr int iconSize = 72;

Label* centered(Label::Role role, const QString& text) {
    auto* const label = new Label(role, text);
    label->setAlignment(Qt::AlignHCenter);
    label->setWrapping(true);
    return label;
}

}  // namespace

WelcomeView::WelcomeView(AppModel& model, QAction& openFolder, QWidget* parent)
    : QWidget(parent), model_(&model) {
    setObjectName(QStringLiteral("welcome"));
    auto* const icon = new QLabel;
    icon_ = icon;
    icon->setPixmap(Appearance::applicationPixmap(iconSize, devicePixelRatioF()));
    icon->setAlignment(Qt::AlignHCenter);

    auto* const choose = new Button(QStringLiteral("Choose Folder…"));
    choose->setObjectName(QStringLiteral("chooseFolderButton"));
    choose->setDefault(true);
    connect(choose, &QPushButton::clicked, &openFolder, &QAction::trigger);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin * 2, margin, margin * 2, margin);
    layout->setSpacing(10);
    layout->addStretch(3);
    layout->addWidget(icon);
    layout->addSpacing(6);
    layout->addWidget(centered(Label::Role::title, QStringLiteral("Drop a project folder here")));
    layout->addWidget(
        centered(Label::Role::caption,
                 QStringLiteral("Quorvane lists the licenses of its Swift, npm and Python packages.")));
    layout->addSpacing(10);
    layout->addWidget(choose, 0, Qt::AlignHCenter);
    layout->addSpacing(10);
    layout->addWidget(centered(
        Label::Role::caption,
        QStringLiteral("Quorvane only reads the folder. Nothing in it is changed or sent anywhere.")));
    layout->addSpacing(14);
    // Its list hides itself while it is empty, so a page around it is what is hidden for want of room.
    recent_ = new QWidget;
    auto* const list = new QVBoxLayout(recent_);
    list->setContentsMargins(0, 0, 0, 0);
    list->addWidget(new RecentList(model), 0, Qt::AlignHCenter);
    layout->addWidget(recent_);
    layout->addStretch(4);
}

/// On a small screen, or with large letters, what is said goes before what adorns.
void WelcomeView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int needed = layout()->totalHeightForWidth(width());
    // What it would need with all that is left out now.
    const int spared = iconSize + recent_->sizeHint().height() + 2 * (margin - tightMargin) + 80;
    isTight_ = needed + (isTight_ ? spared : 0) > height();
    const int edge = isTight_ ? tightMargin : margin;
    layout()->setContentsMargins(edge * 2, edge, edge * 2, edge);
    layout()->setSpacing(isTight_ ? 2 : 10);
    icon_->setVisible(!isTight_);
    recent_->setVisible(!isTight_);
}

void WelcomeView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    model_->lookUpRecentProjects();
}

void WelcomeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    const QColor base = palette().color(QPalette::Base);
    painter.setBrush(base);
    QPen pen(Appearance::mixed(Appearance::separator(palette()), accent, 0.25), 2);
    pen.setDashPattern({4, 4});
    painter.setPen(pen);
    const int edge = isTight_ ? tightMargin : margin;
    const QRectF frame = QRectF(rect()).adjusted(edge, edge, -edge, -edge);
    painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
}
