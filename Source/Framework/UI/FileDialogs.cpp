#include "Framework/UI/FileDialogs.h"

#include "Framework/UI/LWindow.h"

#include <QFileDialog>

#include <memory>
#include <utility>

namespace {

/// `dialog` deletes itself when it is closed.
void Open(std::unique_ptr<QFileDialog> dialog, const std::string& startPath, FileDialogs::Chosen chosen) {
    if (!startPath.empty()) {
        dialog->selectFile(QString::fromStdString(startPath));
    }
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog.get(), &QFileDialog::fileSelected, dialog.get(),
                     [chosen = std::move(chosen)](const QString& file) { chosen(file.toStdString()); });
    dialog.release()->open();
}

}  // namespace

void FileDialogs::AskSaveFile(LWindow& window, const std::string& title, const std::string& startPath, Chosen chosen) {
    auto dialog = std::make_unique<QFileDialog>(window.Shell(), QString::fromStdString(title));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    Open(std::move(dialog), startPath, std::move(chosen));
}

void FileDialogs::AskFolder(LWindow& window, const std::string& title, const std::string& startPath, Chosen chosen) {
    auto dialog = std::make_unique<QFileDialog>(window.Shell(), QString::fromStdString(title));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    Open(std::move(dialog), startPath, std::move(chosen));
}
