#include "QuorvaneApp/Views/Results/PackageTextEdit.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QPlainTextEdit>

QPlainTextEdit* makePackageTextEdit(const QString& objectName, const QString& accessibleName) {
    auto* const view = new QPlainTextEdit;
    view->setObjectName(objectName);
    view->setAccessibleName(accessibleName);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setFrameShape(QFrame::NoFrame);
    view->setFont(Appearance::adjusted(view->font(), -0.5));
    // Nothing is typed here: the key goes on, as everywhere else.
    view->setTabChangesFocus(true);
    view->document()->setDocumentMargin(12);
    return view;
}
