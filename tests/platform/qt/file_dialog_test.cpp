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
    // Types one name after the other; what the dialog returns in the end, "!" before it for each one that it refused.
    std::string Type(bool save, const std::vector<const char*>& names) {
        std::string refusals;
        QTimer::singleShot(0, [&] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            for (const char* name : names) {
                QTimer::singleShot(0, [&] {
                    auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
                    if (box) refusals += "!", box->accept();
                });
                dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
                static_cast<QDialog&>(dialog).accept();
                QCoreApplication::processEvents();
            }
        });
        FileDialogRequest request{
            .save = save, .title = "", .filters = {{"Jogos (*.pzl)", "*.pzl"}}, .folder = folder.Path()};
        return refusals + fixture.desktop.FileDialog(request).value_or("cancelled");
    }

    QtFixture fixture;
    TempFolder folder;
};

}  // namespace

TEST_F(FileDialogs, ANameIsOpenedWithOrWithoutItsExtensionOrRefused) {
    EXPECT_EQ(Type(false, {"um"}), folder / "um.pzl");
    EXPECT_EQ(Type(false, {"dois.tres"}), folder / "dois.tres.pzl");
    EXPECT_EQ(Type(false, {"quatro"}), folder / "quatro");
    EXPECT_EQ(Type(false, {"nada", "nada.pzl", "cinco", "um.pzl"}), "!!!" + folder / "um.pzl");
    EXPECT_EQ(Type(true, {"novo"}), folder / "novo");
}

TEST_F(FileDialogs, ColumnsShowWhatTheyHoldWhateverTheDialogBeforeLeft) {
    for (int turn = 0; turn < 2; ++turn) {
        QTimer::singleShot(0, [] {
            auto* dialog = QApplication::activeModalWidget();
            QCoreApplication::processEvents();
            QHeaderView& header = *dialog->findChild<QTreeView*>("treeView")->header();
            EXPECT_EQ(header.length(), header.viewport()->width());
            for (int column = 0; column < header.count(); ++column) {
                EXPECT_EQ(header.visualIndex(column), column);
                EXPECT_GE(header.sectionSize(column), header.sectionSizeHint(column)) << column;
                header.setSectionResizeMode(column, QHeaderView::Interactive);
                header.resizeSection(column, 20);
            }
            header.moveSection(0, 2);
            header.hideSection(3);
            dialog->close();
        });
        FileDialogRequest request;
        request.folder = folder.Path();
        fixture.desktop.FileDialog(request);
    }
}
