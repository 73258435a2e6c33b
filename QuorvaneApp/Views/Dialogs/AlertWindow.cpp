#include "QuorvaneApp/Views/Dialogs/AlertWindow.h"

#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/ProgramHeading.h"

#include <QGuiApplication>
#include <QVBoxLayout>

AlertWindow::AlertWindow(const QString& title, const QString& text, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QGuiApplication::applicationDisplayName());
    auto* const heading = new ProgramHeading(title);
    heading->addLine(Label::Role::body, text)->setObjectName(QStringLiteral("alertText"));
    auto* const ok = new Button(QStringLiteral("OK"));
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 20, 22, 18);
    layout->addWidget(heading);
    layout->addSpacing(14);
    layout->addStretch();
    layout->addWidget(ok, 0, Qt::AlignRight);
    setFixedWidth(fontMetrics().averageCharWidth() * 70);
}
