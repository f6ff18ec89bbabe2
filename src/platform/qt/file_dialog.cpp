// The dialog for opening and saving files.
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QScreen>
#include <QTreeView>

#include "platform/qt/desktop.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/files.h"

namespace {

constexpr QSize BestSize(860, 480);  // wide enough for all columns and a long name

// The file's own name may hold bytes that no text can show; the dialog then gives back a name
// with replacement marks. The entry that shows like it is the one that was meant.
std::string BytesOf(const QString& chosen) {
    const std::string path = FromText(QDir::toNativeSeparators(chosen));
    if (FileExists(path) || !chosen.contains(QChar::ReplacementCharacter)) return path;
    const std::string folder = FolderOf(path), title = FileTitle(path);
    for (std::optional<std::string> entry = FirstEntry(folder); entry && !entry->empty(); entry = NextEntry())
        if (FromText(ToText(*entry)) == title) return WithSeparator(folder) + *entry;
    return path;
}

class FileDialogBox : public QFileDialog {
public:
    explicit FileDialogBox(const FileDialogRequest& request) : request_(request) {
        setOption(QFileDialog::DontUseNativeDialog);
        setOption(QFileDialog::DontConfirmOverwrite, !(request.flags & OFN_OVERWRITEPROMPT));
        setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        setFileMode(QFileDialog::AnyFile);  // accept() judges by bytes what is to be opened
        setViewMode(QFileDialog::Detail);
        SetTexts();
        SetFilters();
        resize(BestSize.boundedTo(screen()->availableGeometry().size() - QSize(40, 60)));
        if (!request.folder.empty()) setDirectory(ToText(request.folder));
        ArrangeColumns();
    }

    const std::string& Chosen() const { return chosen_; }
    int FilterIndex() const { return int(nameFilters().indexOf(selectedNameFilter())) + 1; }

    void accept() override {
        const QStringList files = selectedFiles();
        if (files.isEmpty()) return;
        chosen_ = BytesOf(files.constFirst());
        if (!request_.save && !FolderExists(chosen_) && !FindFile()) {
            Refuse(ToText(FileTitle(chosen_)));
            return;
        }
        QFileDialog::accept();  // or a walk into the folder that was chosen
    }

private:
    void SetTexts() {
        setWindowTitle(!request_.title.empty() ? ToText(request_.title) : request_.save ? "Salvar como" : "Abrir");
        setLabelText(QFileDialog::LookIn, "Pasta:");
        setLabelText(QFileDialog::FileName, "&Nome do arquivo:");
        setLabelText(QFileDialog::FileType, "Tipo:");
        setLabelText(QFileDialog::Accept, request_.save ? "&Salvar" : "&Abrir");
        setLabelText(QFileDialog::Reject, "Cancelar");
    }

    void SetFilters() {
        QStringList filters;
        for (const auto& [text, pattern] : request_.filters) {
            // The pattern stands in the text already, in brackets: the form in which the dialog reads it.
            filters << ToText(text);
            if (!filters.back().contains('(')) filters.back() += " (" + ToText(pattern) + ")";
        }
        if (filters.isEmpty()) return;
        setNameFilters(filters);
        selectNameFilter(filters.value(request_.filterIndex - 1, filters.constFirst()));
    }

    // All columns in their places and as wide as what they hold, the name with the room that is left: the toolkit
    // keeps the widths of the dialog before.
    void ArrangeColumns() {
        const auto* list = findChild<QTreeView*>("treeView");
        if (!list) return;
        QHeaderView& header = *list->header();
        header.setStretchLastSection(false);
        for (int column = 0; column < header.count(); ++column) {
            header.setSectionHidden(column, false);
            header.moveSection(header.visualIndex(column), column);
            header.setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
        }
    }

    // A name may be typed without its extension.
    bool FindFile() {
        if (FileExists(chosen_)) return true;
        const size_t filter = size_t(FilterIndex()) - 1;
        const std::string pattern = filter < request_.filters.size() ? request_.filters[filter].pattern : "";
        if (!pattern.starts_with("*.") || !FileExists(chosen_ + pattern.substr(1))) return false;
        chosen_ += pattern.substr(1);
        return true;
    }

    void Refuse(const QString& name) {
        QMessageBox box(QMessageBox::Warning, windowTitle(), "O arquivo " + name + " não foi encontrado", {}, this);
        box.setTextFormat(Qt::PlainText);
        box.addButton("OK", QMessageBox::AcceptRole);
        box.exec();
    }

    const FileDialogRequest& request_;
    std::string chosen_;
};

}  // namespace

std::optional<std::string> QtDesktop::FileDialog(FileDialogRequest& request) {
    FileDialogBox dialog(request);
    if (RunDialog(dialog) != QDialog::Accepted) return std::nullopt;
    request.filterIndex = dialog.FilterIndex();
    return dialog.Chosen();
}
