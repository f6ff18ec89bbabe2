// Message boxes, the dialog for colours, and how dialogs are run.
#include <QApplication>
#include <QColorDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSpacerItem>

#include "platform/qt/desktop.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"

namespace {

constexpr int LeastBoxWidth = 260;  // the inside of a message box, without its margins
constexpr int TitleButtons = 140;   // what icon and buttons take of a title bar

QColor FromColor(Color color) { return QColor::fromRgb(ToPixel(color)); }
Color ToGameColor(const QColor& color) { return Rgb(color.red(), color.green(), color.blue()); }

QMessageBox::Icon IconOf(int style) {
    switch (style & 0xF0) {
        case Critical:
            return QMessageBox::Critical;
        case Question:
            return QMessageBox::Question;
        case Exclamation:
            return QMessageBox::Warning;
        default:
            return QMessageBox::NoIcon;
    }
}

// A box sizes itself by its text alone; a short one would cut its title off between the title bar's buttons.
void WidenForTitle(QMessageBox& box) {
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!grid) return;
    const int width = std::max(LeastBoxWidth, box.fontMetrics().horizontalAdvance(box.windowTitle()) + TitleButtons);
    // In the column of the text, which then stays beside the icon.
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), grid->columnCount() - 1);
}

}  // namespace

int QtDesktop::RunDialog(QDialog& dialog) {
    BoxWidget::ReleaseHeld();
    const int discarding = std::exchange(discarding_, 0);  // what the player does here counts
    FormWindow* owner = FormWindow::Frontmost();
    dialog.setWindowModality(Qt::ApplicationModal);
    FormWindow::Attach(dialog, owner);
    dialog.ensurePolished();
    if (!dialog.testAttribute(Qt::WA_Resized)) dialog.adjustSize();
    const QRect room = (owner ? owner->screen() : QGuiApplication::primaryScreen())->availableGeometry();
    const QRect over = owner ? owner->frameGeometry().intersected(room) : room;
    QRect place(QPoint(), dialog.size().boundedTo(room.size()));
    place.moveCenter(over.center());
    dialog.move(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - place.width())),
                std::clamp(place.y(), room.top(), std::max(room.top(), room.bottom() - place.height())));
    const int result = dialog.exec();
    discarding_ = discarding;
    return result;
}

MsgBoxResult QtDesktop::MsgBox(const std::string& text, int style, const std::string& title) {
    QMessageBox box;
    box.setIcon(IconOf(style));
    box.setWindowTitle(ToText(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToText(text));
    WidenForTitle(box);
    if (style & YesNo) {
        QPushButton* yes = box.addButton("&Sim", QMessageBox::YesRole);
        QPushButton* no = box.addButton("&Não", QMessageBox::NoRole);
        box.setDefaultButton(yes);
        box.setEscapeButton(no);
        RunDialog(box);
        return box.clickedButton() == yes ? MsgBoxResult::Yes : MsgBoxResult::No;
    }
    box.setDefaultButton(box.addButton("OK", QMessageBox::AcceptRole));
    RunDialog(box);
    return MsgBoxResult::OK;
}

std::optional<Color> QtDesktop::ColorDialog(Color initial, bool /*fullOpen*/, std::span<Color, 16> custom) {
    QColorDialog dialog(FromColor(ResolveColor(initial)));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle("Cor");
    for (int i = 0; i < 16; ++i) QColorDialog::setCustomColor(i, FromColor(custom[size_t(i)]));
    const int result = RunDialog(dialog);
    for (int i = 0; i < 16; ++i) custom[size_t(i)] = ToGameColor(QColorDialog::customColor(i));
    if (result != QDialog::Accepted) return std::nullopt;
    return ToGameColor(dialog.selectedColor());
}
