#include "QuorvaneApp/Views/Results/LicenseTextView.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Results/PackageTextEdit.h"
#include "QuorvaneApp/Views/Results/TextFindBar.h"
#include "ScanKit/Identification/TextReading.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStringList>
#include <QTextBlock>
#include <QToolButton>

namespace {

const QString meaningOfMarks = QStringLiteral("Marked: what stands in no standard license text.");

/// The licenses that the text was recognized as, each once, in the order in which they stand in it.
QString readAs(const std::string& text) {
    QStringList names;
    for (const ScanKit::TextReading::Match& match : ScanKit::readLicenseText(text).matches) {
        const QString id = Texts::fromUtf8(match.id);
        const QString name = match.byNotice ? QStringLiteral("%1 (a notice)").arg(id) : id;
        if (!names.contains(name)) {
            names.push_back(name);
        }
    }
    return names.isEmpty() ? QStringLiteral("Reads as none of the known licenses.")
                           : QStringLiteral("Reads as %1.").arg(names.join(QStringLiteral(", ")));
}

}  // namespace

LicenseTextView::LicenseTextView(QWidget* parent)
    : QWidget(parent),
      legend_(new QWidget),
      meaning_(new Label(Label::Role::caption)),
      nextMark_(new QToolButton),
      parts_(new QComboBox),
      text_(makePackageTextEdit(QStringLiteral("licenseText"), QStringLiteral("License text"))),
      find_(new TextFindBar(*text_)) {
    meaning_->setObjectName(QStringLiteral("readAs"));
    meaning_->setWrapping(true);
    nextMark_->setObjectName(QStringLiteral("nextMark"));
    nextMark_->setText(QStringLiteral("Next Mark"));
    nextMark_->setFocusPolicy(Qt::TabFocus);
    nextMark_->setAutoRaise(true);
    connect(nextMark_, &QToolButton::clicked, this, &LicenseTextView::goToNextMark);
    parts_->setObjectName(QStringLiteral("textParts"));
    parts_->setAccessibleName(QStringLiteral("License files"));
    parts_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(parts_, &QComboBox::activated, this, [this](int part) { goTo(parts_->itemData(part).toInt()); });
    auto* const legendLine = new QHBoxLayout(legend_);
    legendLine->setContentsMargins(12, 4, 10, 0);
    legendLine->addWidget(meaning_, 1);
    legendLine->addWidget(nextMark_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(legend_);
    layout->addWidget(find_);
    layout->addWidget(parts_);
    layout->addWidget(text_, 1);
    setFocusProxy(text_);
    mark();
    listParts();
}

void LicenseTextView::setText(const QString& text) {
    const QString shown = Texts::withoutEndlessLines(text);
    // The place where someone reads stays when another scan brings the same text.
    if (shown == text_->toPlainText()) {
        return;
    }
    text_->setPlainText(shown);
    mark();
    listParts();
}

void LicenseTextView::startFinding() {
    find_->start();
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
    marks_.clear();
    std::size_t bytes = 0;
    int position = 0;
    const auto advance = [&](const char* end) {
        const auto length = static_cast<std::size_t>(end - shown.data()) - bytes;
        position += static_cast<int>(Texts::fromUtf8(std::string_view(shown).substr(bytes, length)).size());
        bytes += length;
        return position;
    };
    // To recognize nothing at all takes what is known of every license, which is made for the first text.
    const auto parts = shown.empty() ? std::vector<std::string_view>() : ScanKit::partsBeyondLicenses(shown);
    for (const std::string_view part : parts) {
        QTextCursor cursor(text_->document());
        cursor.setPosition(advance(part.data()));
        marks_.push_back(cursor.position());
        cursor.setPosition(advance(part.data() + part.size()), QTextCursor::KeepAnchor);
        marks.push_back({cursor, format});
    }
    text_->setExtraSelections(marks);
    text_->setAccessibleDescription(marks.isEmpty() ? QString() : meaningOfMarks);
    nextMark_->setVisible(!marks.isEmpty());
    legend_->setVisible(!shown.empty());
    const QString licenses = shown.empty() ? QString() : readAs(shown);
    meaning_->setText(marks.isEmpty() ? licenses : licenses + QLatin1Char(' ') + meaningOfMarks);
}

/// Where a text is put together from several files, each begins with a line of its name.
void LicenseTextView::listParts() {
    static const QRegularExpression heading(QStringLiteral("^--- (.+) ---$"),
                                            QRegularExpression::MultilineOption);
    parts_->clear();
    for (auto matches = heading.globalMatch(text_->toPlainText()); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        parts_->addItem(match.captured(1), static_cast<int>(match.capturedStart()));
    }
    parts_->setVisible(parts_->count() > 1);
}

/// Behind the last mark comes the first again.
void LicenseTextView::goToNextMark() {
    const int here = text_->textCursor().position();
    const auto next = std::ranges::upper_bound(marks_, here);
    if (!marks_.isEmpty()) {
        goTo(next == marks_.end() ? marks_.front() : *next);
    }
}

/// The place comes to the upper edge: what follows it is what is wanted.
void LicenseTextView::goTo(int position) {
    QTextCursor cursor = text_->textCursor();
    cursor.movePosition(QTextCursor::End);
    text_->setTextCursor(cursor);
    cursor.setPosition(position);
    text_->setTextCursor(cursor);
}
