#include "tests/support/game_fixture.h"

#include <cstdlib>
#include <stdexcept>

#include "core/board/draw_board.h"
#include "core/pieces.h"

using namespace PuzzleModule;

GameFixture::Environment::Environment(const TempFolder& folder) {
    setenv("XDG_CONFIG_HOME", (folder / "settings").c_str(), 1);
    ResetState();
}

GameFixture::GameFixture(std::unique_ptr<HeadlessDesktop> own) : desktop_(std::move(own)) {
    desktop.programPath = folder / "fento-lira-master";
    main.Load();
    main.Show();
    desktop.RunPending();
}

std::string GameFixture::AddPicture(const std::string& name, Size natural, int variant) {
    const std::string path = folder.Write(name, "the desktop makes its pixels");
    desktop.pictures[path] = {natural, [variant](Size size) { return PatternSurface(size, variant); }};
    return path;
}

bool GameFixture::Start(const std::string& picture, int16_t level) {
    ChosenLevel = level;
    const LevelSizes before = CurrentSizes();
    SetSizes(SizesOfLevel(level, ScreenWidthPx).value());
    const bool built = main.StartGame(picture, [] {});
    if (!built) SetSizes(before);
    return built;
}

void GameFixture::StartGrid(int cols, int rows, int16_t level) {
    const int cell = SizesOfLevel(level, ScreenWidthPx).value().CellSize;
    const std::string name = "grid " + std::to_string(cols) + "x" + std::to_string(rows) + ".bmp";
    if (!Start(AddPicture(name, {cols * cell - 7, rows * cell - 7}), level) || GridCols != cols || GridRows != rows)
        throw std::logic_error("no such grid on this screen");
}

int GameFixture::ElementOf(int row, int col) const {
    for (int i = 0; i <= UpperBound(); ++i)
        if (Pieces[size_t(i)].Row == row && Pieces[size_t(i)].Col == col) return i;
    throw std::logic_error("no such piece");
}

void GameFixture::Put(int row, int col, int x, int y) const {
    Piece(row, col).X = int16_t(x);
    Piece(row, col).Y = int16_t(y);
}

void GameFixture::Turn(int row, int col, int rotation) {
    while (Piece(row, col).Rotation != rotation) RotatePiece(int16_t(ElementOf(row, col)), main.Surfaces.picTmp);
}

void GameFixture::Solve(int x, int y) {
    for (int row = 0; row < GridRows; ++row)
        for (int col = 0; col < GridCols; ++col) {
            Turn(row, col, 0);
            Put(row, col, x + col * CellSize, y + row * CellSize);
        }
}

void GameFixture::SolveAllButLast(int x, int y) {
    Solve(x, y);
    Put(GridRows - 1, GridCols - 1, x + (GridCols + 2) * CellSize, y);
}

GameFixture::Spot GameFixture::Middle(int row, int col) const {
    const PieceRec& piece = Piece(row, col);
    return {float(piece.X + TileSize / 2), float(piece.Y + TileSize / 2)};
}

void GameFixture::Drag(int row, int col, int x, int y) {
    const Spot from = Middle(row, col);
    const Spot to{float(x + TileSize / 2), float(y + TileSize / 2)};
    Press(from);
    Move(to);
    Release(to);
}

MenuItem& GameFixture::Item(const std::string& name, MenuItem** top) {
    for (MenuItem& first : main.Menus.Items()) {
        if (top) *top = &first;
        if (first.Name() == name) return first;
        for (MenuItem& item : first.Items()) {
            if (item.Name() == name) return item;
            for (MenuItem& below : item.Items())
                if (below.Name() == name) return below;
        }
    }
    throw std::logic_error("no menu item " + name);
}

void GameFixture::Menu(const std::string& name) {
    MenuItem* top = nullptr;
    MenuItem& item = Item(name, &top);
    if (top != &item) top->DeliverClick();
    item.DeliverClick();
}

std::string GameFixture::Sounds() {
    std::string names;
    for (const auto& wave : desktop.sounds) {
        std::string name = "?";
        for (const auto& [known, called] : {std::pair{&WaveClick, "CLICK"},
                                            {&WaveGiro, "GIRO"},
                                            {&WaveComplete, "COMPLETE"},
                                            {&WaveRotate, "ROTATE"}})
            if (wave.data() == known->data()) name = called;
        names += (names.empty() ? "" : " ") + name;
    }
    desktop.sounds.clear();
    return names;
}

uint64_t GameFixture::HashOf(const Surface& surface) {
    uint64_t hash = 1469598103934665603u;
    const auto mix = [&hash](uint64_t value) { hash = (hash ^ value) * 1099511628211u; };
    mix(uint64_t(surface.Width())), mix(uint64_t(surface.Height()));
    for (int y = 0; y < surface.Height(); ++y)
        for (int x = 0; x < surface.Width(); ++x) mix(surface.At(x, y));
    return hash;
}

uint64_t GameFixture::ComposedBoard() const {
    Surface board(main.picScreen.Image.Width(), main.picScreen.Image.Height());
    DrawBoard(board, main.Surfaces.picBG);
    return HashOf(board);
}

GameFixture::State GameFixture::Snapshot() const {
    State state;
    for (size_t i = 0; i < Pieces.size(); ++i) {
        const PieceRec& p = Pieces[i];
        std::string& text = state["piece " + std::to_string(i)];
        for (const int16_t field :
             {p.X, p.Y, p.Rotation, p.MaskIndex, p.Row, p.Col, p.PieceId, p.GroupDX, p.GroupDY, p.InGroup})
            text += std::to_string(field) + " ";
        text += std::to_string(HashOf(main.Surfaces.picPat[p.PieceId]));
    }
    const std::pair<const char*, int64_t> numbers[] = {
        {"TileSize", TileSize},
        {"CellSize", CellSize},
        {"TileUnit", TileUnit},
        {"ScatterGap", ScatterGap},
        {"GridCols", GridCols},
        {"GridRows", GridRows},
        {"PictureWidth", PictureWidth},
        {"PictureHeight", PictureHeight},
        {"PickedPiece", PickedPiece},
        {"GameLevel", GameLevel},
        {"ChosenLevel", ChosenLevel},
        {"ThumbsOpen", ThumbsOpen},
        {"ElapsedSeconds", ElapsedSeconds},
        {"GameRunning", GameRunning},
        {"clock runs", main.Timer1.Enabled()},
        {"pointer", int(main.Pointer())},
        {"window", int(main.State())},
        {"board", int64_t(ShownBoard())},
        {"background", int64_t(HashOf(main.Surfaces.picBG))},
        {"miniature", main.imgMaster.GetPicture() ? int64_t(HashOf(main.imgMaster.GetPicture()->Image)) : 0},
        {"strip", int64_t(HashOf(main.Surfaces.picMasks[1]))},
        {"picMaster", int64_t(HashOf(main.Surfaces.picMaster))},
        {"picPat.UBound", main.Surfaces.picPat.UBound()},
    };
    for (const auto& [name, value] : numbers) state[name] = std::to_string(value);
    const auto text = [](double number) { return std::to_string(int(number)); };
    state["view"] = text(main.picScreen.Left()) + " " + text(main.picScreen.Top()) + ", " +
                    text(main.HScroll1.Value()) + " " + text(main.VScroll1.Value());
    state["miniature's place"] = text(main.imgMaster.Top()) + " " + text(main.imgMaster.Width());
    state["panel"] = main.picStatus.Visible() ? "shown" : "hidden";
    state["status line"] = main.lblElapsed.Caption();
    state["saved picture"] = BoardPicturePath;
    state["PicturePath"] = PicturePath;
    return state;
}
