#include "tests/support/window_dump.h"

#include <sstream>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"

namespace {

std::string Quoted(const std::string& text) { return '"' + text + '"'; }
template <typename T>
const T& Quoted(const T& number) {
    return number;
}
// The values one after the other, with a blank behind each; texts in quotes.
template <typename... T>
std::string Words(const T&... values) {
    std::ostringstream out;
    out.precision(9);
    ((out << Quoted(values) << ' '), ...);
    return out.str();
}

// Which of the handlers there are.
template <typename... T>
std::string Hears(const T&... handlers) {
    std::string marks = "hears ";
    ((marks += handlers ? '+' : '-'), ...);
    return marks;
}

void DescribeMenu(MenuItem& menu, State& state) {
    int number = 0;
    for (MenuItem& item : menu.Items()) {
        const Shortcut key = item.Key();
        state[item.Name()] = Words("item", ++number, "of", menu.Name(), item.Caption(), item.Enabled(),
                                   item.Checkable(), item.Checked(), key.control, int(key.key), key.function) +
                             Hears(item.Click);
        DescribeMenu(item, state);
    }
}

std::string Cells(const CellSheet& sheet, const std::string& name, State& state) {
    for (int i = 0; i <= sheet.UpperBound(); ++i) {
        const auto& [frame, figure] = sheet.At(i);
        state[name + " cell " + std::to_string(i)] =
            Words(frame.left, frame.top, frame.width, frame.height, frame.backColor, frame.visible, frame.toolTip) +
            Words(figure.left, figure.top, figure.width, figure.height, figure.visible, figure.toolTip) +
            PixelsOf(figure.image);
    }
    return Words("sheet", sheet.BackColor()) + Hears(sheet.FigureClick, sheet.FrameClick, sheet.FigureDblClick,
                                                     sheet.FigureMouseDown, sheet.FigureMouseMove, sheet.FigureMouseUp,
                                                     sheet.Wheel);
}

std::string FormText(Form& form, State& state) {
    int64_t area = 0;
    for (const Rect& rect : form.Shape().value_or(Region{}))
        area += int64_t(rect.width) * rect.height * (rect.x + 2 * rect.y);
    if (!form.Menus.Items().empty()) DescribeMenu(form.Menus, state);
    return Words("form", form.Caption(), int(form.BorderStyle()), int(form.State()), form.BackColor(), area) +
           (form.Backdrop() ? PixelsOf(*form.Backdrop()) + " " : "") +
           Hears(form.MouseDown, form.KeyDown, form.OnLoad, form.OnActivate, form.OnResize, form.OnUnload, form.OnMenu,
                 form.TakesFile, form.FileDropped);
}

// What only this kind of control has.
std::string KindText(Control& control, State& state) {
    if (auto* form = dynamic_cast<Form*>(&control)) return FormText(*form, state);
    if (auto* sheet = dynamic_cast<CellSheet*>(&control)) return Cells(*sheet, control.Name(), state);
    if (auto* box = dynamic_cast<PictureBox*>(&control))
        return Words("box", box->BackColor(), int(box->BorderStyle()), int(box->InnerScale())) + PixelsOf(box->Image) +
               " " + Hears(box->MouseDown, box->MouseMove, box->MouseUp, box->Click, box->DblClick, box->Wheel);
    if (auto* bar = dynamic_cast<ScrollBar*>(&control))
        return Words("bar", int(bar->Direction()), bar->Min(), bar->Max(), bar->Value(), bar->SmallChange(),
                     bar->LargeChange()) +
               Hears(bar->Change, bar->Scroll, bar->Wheel);
    if (auto* image = dynamic_cast<Image*>(&control))
        return Words("image", int(image->BorderStyle()),
                     image->GetPicture() ? PixelsOf(image->GetPicture()->Image) : "-") +
               Hears(image->MouseDown);
    if (auto* button = dynamic_cast<CommandButton*>(&control))
        return Words("button", button->Caption()) + Hears(button->Click);
    if (auto* label = dynamic_cast<Label*>(&control)) {
        const auto& [font, fore, back, transparent, alignment, wrap, autoSize] = label->Look();
        return Words(dynamic_cast<SkinLabel*>(label) ? "skinned" : "label", label->Caption(), font.points, font.bold,
                     font.underline, fore, back, transparent, int(alignment), wrap, autoSize) +
               Hears(label->Click);
    }
    if (auto* drives = dynamic_cast<DriveListBox*>(&control)) {
        std::string text = Words("drives", drives->Current()) + Hears(drives->Change);
        for (const Volume& volume : drives->Volumes()) text += " " + volume.label;
        return text;
    }
    if (auto* folders = dynamic_cast<DirListBox*>(&control)) {
        std::string text = Words("folders", folders->Path()) + Hears(folders->Change);
        for (const DirListBox::Entry& entry : folders->Entries())
            if (!entry.open) text += " " + entry.label;
        return text;
    }
    return "control";
}

}  // namespace

void Describe(Control& control, State& state) {
    state[control.Name()] = Words(control.Left(), control.Top(), control.Width(), control.Height(),
                                  control.Visible() ? "shown" : "hidden", control.Enabled() ? "enabled" : "dead",
                                  int(control.Pointer()), control.TabIndex(), control.AccessibleName()) +
                            KindText(control, state);
    std::string order;
    for (Control* child : control.Children()) {
        order += " " + child->Name();
        Describe(*child, state);
    }
    if (!order.empty()) state[control.Name()] += " holds" + order;
}

std::string Changes(const State& before, const State& now) {
    std::string text;
    for (const auto& [name, value] : now)
        if (const auto old = before.find(name); old == before.end() || old->second != value)
            text += name + ": " + value + "\n";
    std::string gone;
    for (const auto& entry : before)
        if (!now.contains(entry.first)) gone += " " + entry.first;
    return text + (gone.empty() ? "" : "gone:" + gone + "\n");
}

std::string PixelsOf(const Surface& surface) {
    const Rect stored = surface.IsUniform() ? Rect() : surface.PixelBounds();
    uint32_t mix = surface.IsUniform() ? surface.Background() : 2166136261u;
    for (int y = 0; y < stored.height; ++y)
        for (int x = 0; x < stored.width; ++x) mix = (mix ^ surface.Row(y)[x]) * 16777619u;
    std::ostringstream out;
    out << surface.Width() << "x" << surface.Height();
    if (surface.PixelDensity() != Density{}) out << " times " << surface.PixelDensity().PerUnit();
    out << (surface.IsUniform() ? " all " : " #") << std::hex << mix;
    return out.str();
}
