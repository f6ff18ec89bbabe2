#include "tests/support/game_fixture.h"

#include <sstream>
#include <stdexcept>

#include "core/board/composer.h"
#include "core/pieces.h"
#include "platform/system/files.h"
#include "tests/support/scoped_variable.h"

using namespace PuzzleModule;

GameFixture::Environment::Environment(const TempFolder& folder) {
    SetVariable(SettingsVariable, (folder / "settings").c_str());
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

bool GameFixture::ShowsThePieces() const {
    Surface board(main.picScreen.Image.Width(), main.picScreen.Image.Height());
    BoardComposer().Compose(board, main.Surfaces.picBG);
    return PixelsOf(board) == PixelsOf(main.picScreen.Image);
}

State GameFixture::Snapshot() {
    State state;
    std::ostringstream pile, numbers;
    for (const PieceRec& p : std::as_const(Pieces)) {
        std::ostringstream text;
        text << p.X << ' ' << p.Y << " turned " << p.Rotation << " tile " << p.MaskIndex << " id " << p.PieceId
             << " group " << p.InGroup << ' ' << p.GroupDX << ' ' << p.GroupDY << ' '
             << PixelsOf(std::as_const(main.Surfaces).picPat[p.PieceId]);
        state["piece " + std::to_string(p.Row) + " " + std::to_string(p.Col)] = text.str();
        pile << p.PieceId << ' ';
    }
    numbers << TileSize << ' ' << CellSize << ' ' << TileUnit << ' ' << ScatterGap << ", grid " << GridCols << ' '
            << GridRows << ", picture " << PictureWidth << ' ' << PictureHeight << ", surfaces "
            << main.Surfaces.picPat.UBound();
    state["sizes"] = numbers.str();
    state["pile"] = pile.str();
    const std::pair<const char*, int> values[] = {{"held", PickedPiece},
                                                  {"level", GameLevel},
                                                  {"chosen level", ChosenLevel},
                                                  {"dialog open", ThumbsOpen},
                                                  {"seconds", ElapsedSeconds},
                                                  {"running", GameRunning},
                                                  {"clock runs", main.Timer1.Enabled()},
                                                  {"panning", main.Panning}};
    for (const auto& [name, value] : values) state[name] = std::to_string(value);
    state["board as composed"] = ShowsThePieces() ? "yes" : "no";
    state["strip"] = PixelsOf(main.Surfaces.picMasks[1]);
    state["background"] = PixelsOf(main.Surfaces.picBG);
    state["picMaster"] = PixelsOf(main.Surfaces.picMaster);
    state["saved picture"] = FileTitle(BoardPicturePath);
    state["chosen picture"] = FileTitle(PicturePath);
    Describe(main, state);
    return state;
}
