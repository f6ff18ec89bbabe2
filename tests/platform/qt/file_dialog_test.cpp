// The dialog for files, as the player types into it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>
#include <QTreeView>

#include "platform/qt/widgets/peer.h"
#include "tests/platform/qt/fixture.h"

namespace {

class FileDialogs : public testing::Test {
protected:
    FileDialogs() {
        for (const char* name : {"um.pzl", "dois.tres.pzl", "quatro", "cinco.pzl/x"}) folder.Write(name, "x");
    }
    // What the dialog returns once `use` has been at it.
    std::string Open(bool save, const std::function<void(QFileDialog&)>& use) {
        QTimer::singleShot(0, [&use] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            use(dialog);
            if (dialog.isVisible()) dialog.reject();
        });
        return fixture.desktop.FileDialog({save, "", "Jogos (*.pzl)", "*.pzl", folder.Path()}).value_or("cancelled");
    }
    // Types `name` and confirms; how often the dialog refused it.
    static int Type(QFileDialog& dialog, const std::string& name) {
        int refused = 0;
        QTimer::singleShot(0, [&refused] {
            if (auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                refused = box->text().startsWith("O arquivo ") ? 1 : -1;
                box->accept();
            }
        });
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(ToText(name));
        static_cast<QDialog&>(dialog).accept();
        QCoreApplication::processEvents();
        return refused;
    }

    QtFixture fixture;
    ScratchFolder folder;
};

}  // namespace

TEST_F(FileDialogs, ANameIsOpenedWithOrWithoutItsExtensionOrRefused) {
    const std::pair<const char*, const char*> opened[] = {
        {"um", "um.pzl"}, {"um.pzl", "um.pzl"}, {"dois.tres", "dois.tres.pzl"}, {"quatro", "quatro"}};
    for (const auto& [typed, file] : opened)
        EXPECT_EQ(Open(false, [&](QFileDialog& dialog) { EXPECT_EQ(Type(dialog, typed), 0); }), folder / file);
    EXPECT_EQ(Open(false,
                   [&](QFileDialog& dialog) {
                       for (const char* typed : {"nada", "nada.pzl", "cinco"}) EXPECT_EQ(Type(dialog, typed), 1);
                       EXPECT_TRUE(dialog.isVisible());
                       EXPECT_EQ(Type(dialog, "um"), 0);
                   }),
              folder / "um.pzl");
    EXPECT_EQ(Open(true, [&](QFileDialog& dialog) { EXPECT_EQ(Type(dialog, "novo"), 0); }), folder / "novo");
}

TEST_F(FileDialogs, ColumnsShowWhatTheyHoldWhateverTheDialogBeforeLeft) {
    for (int turn = 0; turn < 2; ++turn)
        Open(false, [](QFileDialog& dialog) {
            QCoreApplication::processEvents();
            QHeaderView& header = *dialog.findChild<QTreeView*>("treeView")->header();
            EXPECT_EQ(header.length(), header.viewport()->width());
            for (int column = 0; column < header.count(); ++column) {
                EXPECT_EQ(header.visualIndex(column), column);
                EXPECT_GE(header.sectionSize(column), header.sectionSizeHint(column)) << column;
                header.setSectionResizeMode(column, QHeaderView::Interactive);
                header.resizeSection(column, 20);
            }
            header.moveSection(0, 2);
            header.hideSection(3);
        });
}
