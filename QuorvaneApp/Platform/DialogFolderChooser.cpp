#include "QuorvaneApp/Platform/DialogFolderChooser.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileDialog>

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
    QObject::connect(
        panel, &QFileDialog::fileSelected, panel,
        [chosen = std::move(chosen)](const QString& path) { chosen(QFile::encodeName(path).toStdString()); });
    panel->open();
}
