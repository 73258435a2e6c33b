#include "QuorvaneApp/Platform/DialogFolderChooser.h"

#include <utility>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>

namespace {

/// Qt's own panel has a place for a title alone, and no desktop shows a long one whole: the message gets a line
/// of its own above everything. A panel of the desktop has no layout to put it into.
void addMessage(QFileDialog& panel, const QString& message) {
    auto* const grid = qobject_cast<QGridLayout*>(panel.layout());
    if (grid == nullptr) {
        return;
    }
    struct Item {
        QLayoutItem* item;
        int row, column, rowSpan, columnSpan;
    };
    std::vector<Item> items;
    while (grid->count() > 0) {
        Item moved{};
        grid->getItemPosition(0, &moved.row, &moved.column, &moved.rowSpan, &moved.columnSpan);
        moved.item = grid->takeAt(0);
        items.push_back(moved);
    }
    for (const Item& moved : items) {
        grid->addItem(moved.item, moved.row + 1, moved.column, moved.rowSpan, moved.columnSpan,
                      moved.item->alignment());
    }
    auto* const label = new QLabel(message);
    label->setObjectName(QStringLiteral("folderMessage"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    grid->addWidget(label, 0, 0, 1, grid->columnCount());
}

}  // namespace

void DialogFolderChooser::choose(const FolderQuestion& question, Answer chosen) {
    auto* const panel = new QFileDialog(window_, question.message);
    panel->setObjectName(QStringLiteral("folderPanel"));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setOption(QFileDialog::ReadOnly, !question.createsFolders);
    panel->setLabelText(QFileDialog::Accept, question.prompt);
    if (question.showsHidden) {
        panel->setFilter(panel->filter() | QDir::Hidden);
    }
    if (question.start) {
        panel->setDirectory(QFile::decodeName(QByteArray::fromStdString(question.start->native())));
    }
    addMessage(*panel, question.message);
    QObject::connect(
        panel, &QFileDialog::fileSelected, panel,
        [chosen = std::move(chosen)](const QString& path) { chosen(QFile::encodeName(path).toStdString()); });
    panel->open();
}
