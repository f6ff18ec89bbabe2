// A sheet of cells, each a coloured frame with a small picture in front: one control
// and one peer, however many cells there are. Lengths are twips on the sheet.
//
// The sheet takes the place of two arrays of controls. Cells are numbered from 1;
// element 0 is a hidden template whose size and colour new cells copy.
#pragma once
#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "platform/controls/control.h"
#include "platform/drawing/surface.h"

class CellSheet : public Control {
public:
    explicit CellSheet(std::string name);

    struct Frame {
        double left = 0, top = 0, width = 1725, height = 1680;
        Color backColor = 0xC0C0C0;
        bool visible = false;
        std::string toolTip;
    };
    struct Figure {
        double left = 0, top = 0, width = 1635, height = 1500;
        bool visible = false;
        std::string toolTip;
        Surface image;  // in pixels of the display; empty until drawn
    };
    struct Cell {
        Frame frame;
        Figure figure;
    };

    int UpperBound() const { return int(cells_.size()) - 1; }
    const Cell& At(int index) const { return cells_[size_t(index)]; }

    // Adds the next cell, a hidden copy of element 0.
    Cell& Load();
    // Removes every cell but element 0.
    void UnloadAll();
    // Where a part lies, in whole pixels of the sheet.
    static Rect FramePixels(const Cell& cell);
    static Rect FigurePixels(const Cell& cell);

    // Write access, for use at once; the cell is painted anew.
    Cell& Change(int index);

    Color BackColor() const { return backColor_; }
    void SetBackColor(Color color);

    enum class Part { None, Frame, Figure };
    struct Hit {
        int index = 0;
        Part part = Part::None;
        double x = 0, y = 0;  // pixels, relative to that part's corner
    };
    // The visible part under a point of the sheet, in pixels of the sheet. Every figure lies
    // in front of every frame; of two of a kind the lower number lies in front. Edges are
    // rounded to whole pixels as they are painted (ToPixelRect). Looks at the cells of
    // one band of the sheet only.
    Hit HitCell(double x, double y) const;
    // The cells with a visible part that may reach into `area`, in pixels of the sheet, by rising numbers.
    std::vector<int> CellsIn(const Rect& area) const;
    std::string ToolTipAt(double x, double y) const;

    std::function<void(int Index)> FigureClick, FrameClick, FigureDblClick;
    // X, Y: twips from the figure's corner.
    using FigureMouseHandler = std::function<void(int Index, int16_t Button, int16_t Shift, float X, float Y)>;
    FigureMouseHandler FigureMouseDown, FigureMouseMove, FigureMouseUp;
    WheelHandler Wheel;

    // The way in for a backend, in pixels of the sheet. A click is a press and a release
    // on the same part of the same cell; a double click comes after the click it follows,
    // in place of a second press.
    void DeliverMouseDown(int16_t button, int16_t shift, float x, float y);
    void DeliverMouseMove(int16_t button, int16_t shift, float x, float y);
    void DeliverMouseUp(int16_t button, int16_t shift, float x, float y);
    void DeliverDblClick(float x, float y);  // of the left button
    void DeliverWheel(const WheelTurn& turn) {
        if (Wheel) Raise(*this, [this, &turn] { Wheel(turn); });
    }

private:
    std::deque<Cell> cells_;
    Color backColor_ = 0x808080;
    Hit pressed_;          // where the button went down
    bool clicks_ = false;  // the next release may be a click
    int16_t held_ = 0;     // buttons down

    // Cells by horizontal bands of the sheet, brought up to date when somebody asks.
    using Span = std::pair<int, int>;  // first and last band; empty if first > last
    Span SpanOf(const Cell& cell) const;
    void NoteChange(int index);
    void RefreshBands() const;
    void Enlist(int index, const Span& span) const;
    void Strike(int index, const Span& span) const;
    void TryCell(int index, double x, double y, Hit& best) const;
    Hit OnPressedFigure(float x, float y) const;
    static Handler ToFigure(const FigureMouseHandler& event, const Hit& hit, int16_t button, int16_t shift);
    mutable std::map<int, std::vector<int>> bands_;
    mutable std::vector<int> tall_;  // cells over too many bands to list them in each
    mutable std::vector<Span> spans_;
    mutable std::vector<int> changed_;
};
