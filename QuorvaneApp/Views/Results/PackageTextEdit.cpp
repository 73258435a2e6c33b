#include "QuorvaneApp/Views/Results/PackageTextEdit.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QPlainTextEdit>

QPlainTextEdit* makePackageTextEdit(const QString& objectName, const QString& accessibleName) {
    auto* const view = new QPlainTextEdit;
    view->setObjectName(objectName);
    view->setAccessibleName(accessibleName);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setFrameShape(QFrame::NoFrame);
    // Authors lay their texts out in columns of letters: lines stay as they are, and paragraphs line up.
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // Not every desktop names one.
    if (!QFontInfo(font).fixedPitch()) {
        font.setFamily(QStringLiteral("monospace"));
    }
    font.setPointSizeF(view->font().pointSizeF());
    view->setFont(Appearance::adjusted(font, -0.5));
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    // Nothing is typed here: the key goes on, as everywhere else.
    view->setTabChangesFocus(true);
    view->document()->setDocumentMargin(12);
    return view;
}
