// A list of picture files as a grid of thumbnails on a sheet that scrolls vertically.
// Lengths are twips.
//
//   browser/thumbs_ctl.cpp        members, events, selection, persisted properties
//   browser/thumbs_scan.cpp       ScanPath, BuildThumbs, thumbnails, tooltips
//   browser/thumbs_layout.cpp     the outer geometry and scrolling
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browser/c_pic_scroll.h"
#include "platform/controls/cell_sheet.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/property_bag.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/picture.h"

class ThumbsCtl : public Control {
public:
    // `waitLabel` is shown while a long scan runs and hidden at its end.
    ThumbsCtl(std::string name, Label& waitLabel);

    // Members.
    void AddItem(std::string Caminho);
    Color BackColor() const;
    void SetBackColor(const Color& cColor);
    void Clear();
    int16_t Columns() const { return ColumnCount; }
    void SetColumns(int16_t newColumns) { ColumnCount = newColumns; }
    int32_t ColumnType() const { return ColumnMode; }
    void SetColumnType(const int32_t& NewColumnType);
    Color ForeColor() const;
    void SetForeColor(const Color& cColor);
    bool ImageToolTip() const { return ShowToolTips; }
    void SetImageToolTip(bool newToolTipImg);
    std::string ItemIndex() const;                                    // decimal text of the selected item's number
    std::optional<std::string> ItemData(const int16_t& Index) const;  // path of an item; nothing outside the list
    int16_t ListCount() const;                                        // at most 32767, however long the list
    const std::string& Path() const { return StoredPath; }
    void SetPath(std::string sPath);
    void RemoveItem(int16_t Index);
    void ScanPath(std::string& Path);

    // Events. `Filename` of the first two is the list's element itself; it outlives the handler.
    std::function<void(int16_t&PicIndex, std::string&Filename)> ImageClick, ImageDblClick;
    using ItemMouseHandler = std::function<void(int16_t& PicIndex, int16_t& Button, int16_t& Shift, float& X, float& Y,
                                                std::string& Filename)>;
    ItemMouseHandler ImageMouseDown, ImageMouseMove, ImageMouseUp;

    // The container's calls.
    void UserControl_ReadProperties(const PropertyBag& PropBag);
    void UserControl_WriteProperties(PropertyBag& PropBag) const;
    void UserControl_Resize();
    std::function<void(const std::string& property)> PropertyChanged;  // a value is to be stored

    // Child controls.
    PictureBox picFundo{"picFundo", ScaleMode::Twips};
    CellSheet picInterior{"picInterior"};  // of cell k the figure is imgFigura(k), the frame lblFigura(k)
    ScrollBar scrThumbs{"scrThumbs", Orientation::Vertical};

    // Handlers of the child controls.
    void imgFigura_Click(int Index);
    void lblFigura_Click(int Index);
    void imgFigura_DblClick(int Index);
    void imgFigura_MouseDown(int Index, int16_t Button, int16_t Shift, float X, float Y);
    void imgFigura_MouseMove(int Index, int16_t Button, int16_t Shift, float X, float Y);
    void imgFigura_MouseUp(int Index, int16_t Button, int16_t Shift, float X, float Y);
    void scrThumbs_Change();
    void scrThumbs_Scroll();
    void picInterior_Wheel(const WheelTurn& turn);  // a row of the sheet for each notch; over the bar too

    // A bar's range with its steps; a negative MaxValue becomes 0, one of 32000 and more leaves Max.
    static void SetBarRange(ScrollBar& Bar, int32_t& MaxValue, int16_t SmallStep, int32_t LargeStep);

    const std::vector<std::string>& SizeTexts() const { return Sizes; }
    int16_t HighlightedIndex() const { return HiliteIndex; }

protected:
    void Resized() override { UserControl_Resize(); }

private:
    // Cells that are missing are built, the sheet and the bar follow. Yields after each cell.
    void BuildThumbs();
    void BuildCell(int k, int cols);
    void LoadOriginal(int k);
    void FitThumb(int16_t MaxHeight, int16_t MaxWidth);
    void DrawThumb(int16_t W, int16_t H, int Index);
    void PlaceCell(int k, int cols);
    void SizeSheet(int cols);
    std::string SizeText() const;
    std::optional<std::string> ToolTipFor(int k) const;
    void SetToolTips(int k, const std::string& text);
    void SetFrameColor(int Index, Color color);
    void RaiseItemMouse(const ItemMouseHandler& event, int Index, int16_t Button, int16_t Shift, float X, float Y);
    static void ScrollSheet(ScrollBar& Bar, CellSheet& Sheet);
    int ColumnsNow() const;
    double ScreenScale();
    double PixelsPerUnit(int k);
    Size BoxPixels();
    bool FormIsGone();
    int LastItem() const { return int(Files.size()) - 1; }
    bool IsItem(int Index) const { return Index >= 0 && Index <= LastItem(); }

    Label& waitLabel_;
    // Element 0 is always empty. Shared, so that an event can hand out the element itself
    // and its handler may still empty the list.
    std::vector<std::shared_ptr<std::string>> Files;
    std::vector<std::string> Sizes;  // only ever grows; an element is written with its cell
    int16_t SelIndex = 0;
    int16_t HiliteIndex = 0;
    std::string StoredPath;
    Color StoredBackColor = 0x808080;
    Color StoredForeColor = 0xC0C0C0;
    int16_t ColumnCount = 1;
    int32_t ColumnMode = 0;  // 0: as many columns as the sheet has room for; else ColumnCount
    bool ShowToolTips = true;
    std::unique_ptr<cPicScroll> Scroller;

    // picOriginal: the last picture that decoded. Its stretched twin imgTeste2 is no more than
    // a size, that of the thumbnail.
    std::optional<Picture> picOriginal;
    double imgTeste2Width = 1635, imgTeste2Height = 1500;
};
