// The group of a held piece is found by a flood along the four sides of the grid.
//
// A walker goes straight on in its own direction, and at each piece that it marks it first
// sends out the two cross walkers. That order is kept by a stack of our own, so that a board
// of many thousands of pieces costs no depth of calls; and an index from PieceId to element,
// made once a walk, keeps each step from searching the whole pile.
#include "play/joining.h"

#include <array>
#include <vector>

#include "core/game_state.h"
#include "platform/system/numbers.h"

namespace PuzzleModule {
namespace {

enum Direction : uint8_t { Left, Right, Up, Down };

struct Walker {
    int colStep, rowStep;
    std::array<Direction, 2> cross;  // sent out at each new piece, in this order
};

constexpr std::array<Walker, 4> Walkers{{
    {-1, 0, {Up, Down}},
    {+1, 0, {Up, Down}},
    {0, -1, {Right, Left}},
    {0, +1, {Left, Right}},
}};

// The element of each PieceId, -1 where there is none.
class ElementOfPiece {
public:
    ElementOfPiece() {
        for (size_t i = 0; i < Pieces.size(); ++i) {
            const int id = Pieces[i].PieceId;
            if (id < 0) continue;
            if (size_t(id) >= element_.size()) element_.resize(size_t(id) + 1, -1);
            if (element_[size_t(id)] < 0) element_[size_t(id)] = int(i);
        }
    }
    int operator[](int id) const { return id < 0 || size_t(id) >= element_.size() ? -1 : element_[size_t(id)]; }

private:
    std::vector<int> element_;
};

// The unmarked element joined to element `index` on that side, or -1.
int JoinedNeighbour(const ElementOfPiece& elements, int index, Direction direction) {
    const PieceRec& piece = Pieces[size_t(index)];
    const Walker& walker = Walkers[direction];
    const int j = elements[piece.PieceId + walker.colStep + walker.rowStep * GridCols];
    if (j < 0) return -1;
    const PieceRec& other = Pieces[size_t(j)];
    const bool joined = !other.InGroup && other.Rotation == 0 && other.Col == piece.Col + walker.colStep &&
                        other.Row == piece.Row + walker.rowStep && other.X == piece.X + walker.colStep * CellSize &&
                        other.Y == piece.Y + walker.rowStep * CellSize;
    return joined ? j : -1;
}

void Mark(PieceRec& piece) {
    const PieceRec& held = Pieces[size_t(PickedPiece)];
    Store(piece.GroupDX, piece.X - held.X);
    Store(piece.GroupDY, piece.Y - held.Y);
    piece.InGroup = True;
}

void Walk(int16_t start, Direction startDirection) {
    struct Step {
        int index;
        Direction direction;
    };
    if (PickedPiece < 0 || PickedPiece > UpperBound() || start < 0 || start > UpperBound()) return;
    const ElementOfPiece elements;
    std::vector<Step> pending{{start, startDirection}};
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        const int j = JoinedNeighbour(elements, step.index, step.direction);
        if (j < 0) continue;
        Mark(Pieces[size_t(j)]);
        const auto& cross = Walkers[step.direction].cross;
        pending.push_back({j, step.direction});  // taken up last
        pending.push_back({j, cross[1]});
        pending.push_back({j, cross[0]});
    }
}

}  // namespace

void CollectGroup(int16_t Index) {
    JoinLeft(Index);
    JoinRight(Index);
    JoinUp(Index);
    JoinDown(Index);
}

void JoinLeft(int16_t Index) { Walk(Index, Left); }
void JoinRight(int16_t Index) { Walk(Index, Right); }
void JoinUp(int16_t Index) { Walk(Index, Up); }
void JoinDown(int16_t Index) { Walk(Index, Down); }

}  // namespace PuzzleModule
