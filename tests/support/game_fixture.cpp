#include "tests/support/game_fixture.h"

#include <sstream>
#include <stdexcept>

#include "core/pieces.h"
#include "platform/system/files.h"
#include "tests/reference/literal_board.h"
#include "tests/support/variables.h"

using namespace PuzzleModule;

GameFixture::GameFixture(std::unique_ptr<HeadlessDesktop> own) : desktop_(std::move(own)) {
    SetVariable(SettingsVariable, folder / "settings");
    ResetState();
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

PieceRec& GameFixture::Piece(int row, int col) const {
    return *std::ranges::find(Pieces, std::pair<int, int>(row, col),
                              [](const PieceRec& piece) { return std::pair<int, int>(piece.Row, piece.Col); });
}

void GameFixture::Put(int row, int col, int x, int y) const {
    Piece(row, col).X = int16_t(x);
    Piece(row, col).Y = int16_t(y);
}

void GameFixture::Turn(int row, int col, int rotation) {
    PieceRec& piece = Piece(row, col);
    while (piece.Rotation != rotation) RotatePiece(int16_t(&piece - Pieces.data()), main.Surfaces.picTmp);
}

void GameFixture::Solve(int x, int y) {
    for (int row = 0; row < GridRows; ++row)
        for (int col = 0; col < GridCols; ++col) {
            Turn(row, col, 0);
            Put(row, col, x + col * CellSize, y + row * CellSize);
        }
}

bool GameFixture::Win() {
    Solve(220, 220);
    Put(GridRows - 1, GridCols - 1, 0, 0);
    Press({float(TileSize / 2), float(TileSize / 2)});
    const Spot home{float(220 + (GridCols - 1) * CellSize + TileSize / 2),
                    float(220 + (GridRows - 1) * CellSize + TileSize / 2)};
    Move(home), Release(home);
    return !GameRunning;
}

GameFixture::Spot GameFixture::Middle(int row, int col) const {
    const PieceRec& piece = Piece(row, col);
    return {float(piece.X + TileSize / 2), float(piece.Y + TileSize / 2)};
}

MenuItem* GameFixture::Find(MenuItem& menu, const std::string& name) {
    for (MenuItem& item : menu.Items()) {
        if (item.Name() == name) return &item;
        if (MenuItem* below = Find(item, name)) return below;
    }
    return nullptr;
}

void GameFixture::Menu(const std::string& name) {
    for (MenuItem& top : main.Menus.Items())
        if (top.Name() == name || Find(top, name)) top.DeliverClick();
    if (MenuItem* item = Find(main.Menus, name); item && !item->Items().size()) item->DeliverClick();
}

std::string GameFixture::Sounds() {
    const std::map<const std::byte*, std::string> names{{WaveClick.data(), "CLICK "},
                                                        {WaveGiro.data(), "GIRO "},
                                                        {WaveComplete.data(), "COMPLETE "},
                                                        {WaveRotate.data(), "ROTATE "}};
    std::string started;
    for (const auto& wave : std::exchange(desktop.sounds, {})) started += names.at(wave.data());
    return started;
}

bool GameFixture::ShowsThePieces() const {
    Surface board(main.picScreen.Image.Width(), main.picScreen.Image.Height());
    board.SetDensity(main.picScreen.Image.PixelDensity());
    reference::DrawBoard(board, main.Surfaces.picBG);
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
            << main.Surfaces.picPat.UBound() << ", level " << GameLevel << ", dialog " << ThumbsOpen;
    state["numbers"] = numbers.str();
    state["pile"] = pile.str();
    const std::pair<const char*, int> values[] = {{"held", PickedPiece},       {"chosen level", ChosenLevel},
                                                  {"seconds", ElapsedSeconds}, {"running", GameRunning},
                                                  {"panning", main.Panning},   {"clock runs", main.Timer1.Enabled()}};
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
