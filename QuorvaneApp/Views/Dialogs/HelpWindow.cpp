#include "QuorvaneApp/Views/Dialogs/HelpWindow.h"

#include "QuorvaneApp/Views/Dialogs/HelpPage.h"

#include <QTextBrowser>
#include <QVBoxLayout>

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(QStringLiteral("Quorvane Help"));
    auto* const page = new QTextBrowser;
    page->setObjectName(QStringLiteral("helpPage"));
    page->setAccessibleName(QStringLiteral("Quorvane Help"));
    page->setFrameShape(QFrame::NoFrame);
    page->setOpenLinks(false);
    page->document()->setDocumentMargin(24);
    page->setHtml(helpPage());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    resize(fontMetrics().averageCharWidth() * 92, fontMetrics().height() * 38);
}
