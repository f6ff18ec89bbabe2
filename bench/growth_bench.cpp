// How the cost of what a player does grows with the pieces: 50 to 16,000 of them, far more than any screen makes,
// on one board of 9600 x 5400 pixels. The handlers of the main window are called as the desktop calls them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "core/board/draw_board.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "core/saved_game.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

constexpr int Step = 44;  // from piece to piece, as the scatter lays them

// A running game of so many pieces of 60 pixels, spread in an order that mixes neighbours.
class SpreadGame {
public:
    GameFixture play{Size{7680, 4320}};

    explicit SpreadGame(int count) {
        play.StartGrid(4, 4, 5);
        SetSizes({60, 33, 3, 3});
        GridCols = int16_t(count <= 50 ? 10 : count <= 200 ? 20 : count <= 1000 ? 40 : count <= 4000 ? 80 : 100);
        GridRows = int16_t(count / GridCols);
        ScaleMasks(TileSize);
        Surface& picMaster = play.main.Surfaces.picMaster;
        picMaster.Resize(GridCols * CellSize, GridRows * CellSize);
        Pixel* pixels = picMaster.DrawAll();
        for (int i = 0; i < picMaster.Width() * picMaster.Height(); ++i)
            pixels[i] = OpaqueBits | uint32_t(i) * 2654435761u;
        CutPieces(picMaster, play.main.Surfaces.picMasks[1], play.main.Surfaces.picPat);
        Mix();
        play.main.picScreen.Image.SetBackground(ToPixel(Rgb(90, 120, 60)));
        Draw();
    }

    // The records in any order, spread over a lattice that fits the board.
    void Mix() {
        std::shuffle(Pieces.begin(), Pieces.end(), random_);
        const int across = std::max(int(GridCols), int(Pieces.size()) / 80);
        for (size_t i = 0; i < Pieces.size(); ++i) {
            Pieces[i].X = int16_t(220 + int(i) % across * Step);
            Pieces[i].Y = int16_t(220 + int(i) / across * Step);
        }
        std::shuffle(Pieces.begin(), Pieces.end(), random_);
    }
    void Draw() { DrawBoard(play.main.picScreen.Image, play.main.Surfaces.picBG); }

    // The middle of any piece.
    GameFixture::Spot Any() {
        const PieceList& pieces = Pieces;
        const PieceRec& piece = pieces[random_() % pieces.size()];
        return {float(piece.X + TileSize / 2), float(piece.Y + TileSize / 2)};
    }

private:
    std::minstd_rand random_{7};
};

class Stopwatch {
public:
    explicit Stopwatch(benchmark::State& state) : state_(state), start_(std::chrono::steady_clock::now()) {}
    ~Stopwatch() {
        state_.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count());
    }

private:
    benchmark::State& state_;
    std::chrono::steady_clock::time_point start_;
};

void RequireHeld(benchmark::State& state, bool held) {
    if ((PickedPiece >= 0) != held) state.SkipWithError(held ? "no piece was taken" : "the piece was not let go");
}

void PickUp(benchmark::State& state) {
    SpreadGame game(int(state.range(0)));
    for (auto _ : state) {
        const GameFixture::Spot at = game.Any();
        {
            const Stopwatch watch(state);
            game.play.Press(at);
        }
        RequireHeld(state, true);
        game.play.Release(at);
    }
}

void Move(benchmark::State& state) {
    SpreadGame game(int(state.range(0)));
    const GameFixture::Spot at = game.Any();
    game.play.Press(at);
    int step = 0;
    for (auto _ : state) {
        // Within the first ten columns and five rows of the lattice: over as many pieces whatever their number.
        const GameFixture::Spot to{float(250 + ++step % 64 * 5), float(250 + step % 48 * 3)};
        const Stopwatch watch(state);
        game.play.Move(to);
    }
    RequireHeld(state, true);
}

void Drop(benchmark::State& state) {
    SpreadGame game(int(state.range(0)));
    for (auto _ : state) {
        const GameFixture::Spot at = game.Any();
        game.play.Press(at);
        game.play.Move({at.x + 30, at.y + 5});
        {
            const Stopwatch watch(state);
            game.play.Release({at.x + 30, at.y + 5});
        }
        RequireHeld(state, false);
    }
}

// All but the writing of the file.
void Save(benchmark::State& state) {
    SpreadGame game(int(state.range(0)));
    for (auto _ : state) {
        game.Mix();
        const Stopwatch watch(state);
        SortPieces();
        benchmark::DoNotOptimize(FormatSavedGame(*GameToSave()));
    }
}

// All but the reading of the file and the decoding of its picture.
void Load(benchmark::State& state) {
    SpreadGame game(int(state.range(0)));
    GameSurfaces& surfaces = game.play.main.Surfaces;
    const std::string bytes = FormatSavedGame(*GameToSave()).value();
    for (auto _ : state) {
        const Stopwatch watch(state);
        const auto saved = ParseSavedGame(bytes, [](const std::string&) { return true; });
        if (!saved || saved->Pieces.size() != size_t(state.range(0))) return state.SkipWithError("not read");
        CutPieces(surfaces.picMaster, surfaces.picMasks[1], surfaces.picPat);
        for (const SavedPiece& piece : saved->Pieces) {
            Pieces[size_t(piece.PieceId)].X = piece.X;
            Pieces[size_t(piece.PieceId)].Y = piece.Y;
        }
        game.Draw();
    }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int count : {50, 200, 1000, 4000, 16000}) benchmark->Arg(count);
    benchmark->UseManualTime();
}
BENCHMARK(PickUp)->Apply(Sizes);
BENCHMARK(Move)->Apply(Sizes);
BENCHMARK(Drop)->Apply(Sizes);
BENCHMARK(Save)->Apply(Sizes);
BENCHMARK(Load)->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
