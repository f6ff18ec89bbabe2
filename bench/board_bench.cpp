// The board of a large screen: how long composing takes, measured against a plain copy of as many
// pixels. docs/benchmarking tells how to compare two builds.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "core/board/draw_board.h"
#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "platform/drawing/raster.h"
#include "play/joining.h"

using namespace PuzzleModule;

namespace {

// A game of cols x rows pieces of 20 `unit`, 80 unless told, all joined as in the solved picture.
struct Game {
    GameSurfaces surfaces;
    Surface board, background;

    Game(int cols, int rows, int boardWidth, int boardHeight, int unit = 4, Density density = {})
        : board(boardWidth, boardHeight), background(boardWidth, boardHeight, ToPixel(Rgb(90, 120, 60))) {
        ResetState();
        Surfaces = &surfaces;
        surfaces.SetDensity(density);
        for (Surface* surface : {&board, &background}) surface->SetDensity(density);
        SetSizes({int16_t(20 * unit), int16_t(11 * unit), int16_t(unit), 3});
        GameLevel = 5;
        GridCols = int16_t(cols);
        GridRows = int16_t(rows);
        ScaleMasks(TileSize);
        surfaces.picMaster.Resize(cols * CellSize, rows * CellSize);
        Pixel* pixels = surfaces.picMaster.DrawAll();
        const Rect stored = surfaces.picMaster.PixelBounds();
        for (int i = 0; i < stored.width * stored.height; ++i) pixels[i] = OpaqueBits | uint32_t(i) * 2654435761u;
        CutPieces(surfaces.picMaster, surfaces.picMasks[1], surfaces.picPat);
        for (PieceRec& piece : Pieces) {
            piece.X = int16_t(11 + piece.Col * CellSize);
            piece.Y = int16_t(11 + piece.Row * CellSize);
        }
    }
    ~Game() { Surfaces = nullptr; }

    // Spreads the pieces over a lattice like that of the scatter, in an order that mixes neighbours.
    void Spread(int left, int top) {
        const int step = CellSize + ScatterGap * TileUnit + 1;
        for (size_t i = 0; i < Pieces.size(); ++i) {
            const int place = int(i * 7919 % Pieces.size());
            Pieces[i].X = int16_t((left + place % GridCols * step) / 11 * 11);
            Pieces[i].Y = int16_t((top + place / GridCols * step) / 11 * 11);
        }
    }

    void Draw() { DrawBoard(board, background); }
};

Game LargeGame() { return Game(36, 24, 4800, 2700); }

void MoveHeld(int step) {
    Pieces[0].X = int16_t(340 + step % 64 * 5);
    Pieces[0].Y = int16_t(330 + step % 48 * 3);
}

void MoveGroup(int step) {
    MoveHeld(step);
    const PieceRec& held = Pieces[0];
    for (size_t i = 1; i < Pieces.size(); ++i) {
        if (Pieces[i].InGroup == 0) continue;
        Pieces[i].X = int16_t(held.X + Pieces[i].GroupDX);
        Pieces[i].Y = int16_t(held.Y + Pieces[i].GroupDY);
    }
}

// Yardstick and composition write the same memory: where it lies makes more of a difference than what is compared.
Surface& LargeBoard() {
    static Surface board(4800, 2700);
    return board;
}

// The yardstick.
void CopyBoard(benchmark::State& state) {
    const size_t count = size_t{4800} * 2700;
    const auto from = std::make_unique<Pixel[]>(count);
    std::memset(from.get(), 1, count * sizeof(Pixel));
    for (auto _ : state) {
        std::memcpy(LargeBoard().DrawAll(), from.get(), count * sizeof(Pixel));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t(count * sizeof(Pixel)));
}
BENCHMARK(CopyBoard);

// Foreign drawing on the board makes every composition a whole one.
void ComposeWhole(benchmark::State& state) {
    Game game = LargeGame();
    game.Spread(0, 0);
    for (auto _ : state) {
        SetPixel(LargeBoard(), 0, 0, 0);
        DrawBoard(LargeBoard(), game.background);
    }
    benchmark::DoNotOptimize(LargeBoard().At(1, 1));
}
BENCHMARK(ComposeWhole);

// Arguments: pieces; 0 if the held one moves over the spread pieces, 1 if over bare board.
void MoveOnePiece(benchmark::State& state) {
    const bool large = state.range(0) > 50;
    Game game = large ? LargeGame() : Game(10, 5, 2400, 1350);
    game.Spread(300, state.range(1) == 0 ? 300 : 900);
    PickedPiece = 0;
    game.Draw();
    int step = 0;
    for (auto _ : state) {
        MoveHeld(++step);
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(MoveOnePiece)->ArgsProduct({{50, 864}, {0, 1}});

// The first half of the rows moves with the held piece over the other half.
void MoveHalfOfThePieces(benchmark::State& state) {
    Game game = LargeGame();
    PickedPiece = 0;
    for (PieceRec& piece : Pieces) {
        piece.InGroup = piece.Row < 12 && piece.PieceId != 0 ? -1 : 0;
        piece.GroupDX = int16_t(piece.X - Pieces[0].X);
        piece.GroupDY = int16_t(piece.Y - Pieces[0].Y);
    }
    game.Draw();
    int step = 0;
    for (auto _ : state) {
        MoveGroup(++step);
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(MoveHalfOfThePieces);

// The press on a piece of a group of so many of 864: its record comes to the front, the group is collected.
void PickUpInGroup(benchmark::State& state) {
    Game game = LargeGame();
    const std::vector<PieceRec> home = Pieces;
    game.Spread(11, 1200);
    for (size_t i = 0; i < size_t(state.range(0)); ++i) Pieces[i] = home[i];
    game.Draw();
    for (auto _ : state) {
        PickedPiece = -1;
        for (PieceRec& piece : Pieces) piece.InGroup = 0;
        // The lowest piece of the group: it is another one each time.
        size_t taken = Pieces.size() - 1;
        while (Pieces[taken].PieceId >= state.range(0)) --taken;
        const PieceRec record = Pieces[taken];
        for (size_t k = taken; k > 0; --k) Pieces[k] = Pieces[k - 1];
        Pieces[0] = record;
        PickedPiece = 0;
        CollectGroup(0);
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(PickUpInGroup)->Arg(200)->Arg(800);

// The same pixels of a screen of 3840 x 2160: the argument is how many of them a unit of the game has along one side.
Game GameOfDensity(const benchmark::State& state) {
    const int k = int(state.range(0));
    return Game(18, 12, 4800 / k, 2700 / k, 8 / k, Density(k));
}

void ComposeAtDensity(benchmark::State& state) {
    Game game = GameOfDensity(state);
    game.Spread(0, 0);
    for (auto _ : state) {
        SetPixel(game.board, 0, 0, 0);
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(ComposeAtDensity)->Arg(1)->Arg(2);

void MoveAtDensity(benchmark::State& state) {
    Game game = GameOfDensity(state);
    game.Spread(0, 0);
    PickedPiece = 0;
    game.Draw();
    int step = 0;
    for (auto _ : state) {
        ++step;
        Pieces[0].X = int16_t((340 + step % 64 * 6) / state.range(0));
        Pieces[0].Y = int16_t((330 + step % 48 * 4) / state.range(0));
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(MoveAtDensity)->Arg(1)->Arg(2);

// All pieces are joined; the lowest of them is brought to the top and let go, again and again.
void PickUpAtDensity(benchmark::State& state) {
    Game game = GameOfDensity(state);
    game.Draw();
    for (auto _ : state) {
        PickedPiece = -1;
        for (PieceRec& piece : Pieces) piece.InGroup = 0;
        std::rotate(Pieces.begin(), Pieces.end() - 1, Pieces.end());
        PickedPiece = 0;
        CollectGroup(0);
        game.Draw();
    }
    benchmark::DoNotOptimize(game.board.At(1, 1));
}
BENCHMARK(PickUpAtDensity)->Arg(1)->Arg(2);

void CopySquare(benchmark::State& state) {
    Surface from(160, 160), to(160, 160);
    FillRect(from, {3, 5, 100, 90}, Rgb(1, 2, 3));
    for (auto _ : state) {
        BitBlt(to, 0, 0, 160, 160, from, 0, 0, RasterOp::SrcCopy);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopySquare);

void TurnPiece(benchmark::State& state) {
    Game game(2, 2, 400, 400);
    SetSizes({160, 88, 8, 2});
    ScaleMasks(TileSize);
    CutPieces(game.surfaces.picMaster, game.surfaces.picMasks[1], game.surfaces.picPat);
    for (auto _ : state) {
        RotatePiece(0, game.surfaces.picTmp);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TurnPiece);

void CutLargePicture(benchmark::State& state) {
    Game game = LargeGame();
    for (auto _ : state) CutPieces(game.surfaces.picMaster, game.surfaces.picMasks[1], game.surfaces.picPat);
}
BENCHMARK(CutLargePicture)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
