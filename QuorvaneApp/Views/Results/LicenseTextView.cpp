#include "QuorvaneApp/Views/Results/LicenseTextView.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Results/PackageTextEdit.h"
#include "ScanKit/Identification/TextReading.h"

#include <string>

#include <QEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

LicenseTextView::LicenseTextView(QWidget* parent)
    : QWidget(parent),
      legend_(new Label(Label::Role::caption, tr("Marked: what stands in no standard license text."))),
      text_(makePackageTextEdit(QStringLiteral("licenseText"), tr("License text"))) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    legend_->setContentsMargins(12, 8, 12, 6);
    legend_->setWrapping(true);
    layout->addWidget(legend_);
    layout->addWidget(text_, 1);
    setFocusProxy(text_);
}

void LicenseTextView::setText(const QString& text) {
    text_->setPlainText(Texts::withoutEndlessLines(text));
    mark();
}

void LicenseTextView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        mark();
    }
}

void LicenseTextView::mark() {
    // As the view holds it: each line break is one character there.
    const std::string shown = Texts::toUtf8(text_->toPlainText());
    QTextCharFormat format;
    format.setBackground(Appearance::severityBackground(ScanKit::Flag::Severity::medium, palette()));
    // Not by colour alone.
    format.setUnderlineStyle(QTextCharFormat::DotLine);
    format.setUnderlineColor(Appearance::severityColor(ScanKit::Flag::Severity::medium, palette()));
    QList<QTextEdit::ExtraSelection> marks;
    std::size_t bytes = 0;
    int position = 0;
    const auto advance = [&](const char* end) {
        const auto length = static_cast<std::size_t>(end - shown.data()) - bytes;
        position += static_cast<int>(Texts::fromUtf8(std::string_view(shown).substr(bytes, length)).size());
        bytes += length;
        return position;
    };
    for (const std::string_view part : ScanKit::partsBeyondLicenses(shown)) {
        QTextCursor cursor(text_->document());
        cursor.setPosition(advance(part.data()));
        cursor.setPosition(advance(part.data() + part.size()), QTextCursor::KeepAnchor);
        marks.push_back({cursor, format});
    }
    text_->setExtraSelections(marks);
    text_->setAccessibleDescription(marks.isEmpty() ? QString() : legend_->text());
    legend_->setVisible(!marks.isEmpty());
}
