// The saved game as text: format, parse, check. A number is a blank or a minus sign, its digits
// and a blank; numbers of one line follow each other with nothing else between them. The
// path has a line of its own and is taken whole, commas and quotes included.
#include "core/saved_game.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <limits>
#include <utility>

#include "core/code_page.h"

namespace PuzzleModule {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Whitespace = " \t\r\n";
constexpr int MostPieces = std::numeric_limits<int16_t>::max();

// Pixels that the surfaces of all pieces may take together, four bytes each. A screen of 7680 by 4320
// makes 22 million of them from a photograph and at most 33 million from a picture of the worst shape;
// beyond it, and beyond what the player's own screen makes, the file is no game but a trap.
constexpr int64_t MostSurfacePixels = int64_t{1} << 25;

// By so many pixels a fitted picture can end above the last column or row that it was given: one makes the margin
// even, two are the frame.
constexpr int MostPixelsLost = 3;

int SortKey(const PieceRec& piece) { return piece.Row * 100 + piece.Col; }

// Sorted by exchanging records until every key is at most those after it. The order of exchanges decides how records
// with equal keys end up; a grid of at most 100 columns has none, and any sort will do.
std::vector<PieceRec> SortedByCell(std::vector<PieceRec> pieces) {
    std::vector<PieceRec> sorted = pieces;
    std::ranges::sort(sorted, {}, SortKey);
    if (std::ranges::adjacent_find(sorted, {}, SortKey) == sorted.end()) return sorted;
    for (size_t i = 0; i < pieces.size(); ++i)
        for (size_t j = i + 1; j < pieces.size(); ++j)
            if (SortKey(pieces[i]) > SortKey(pieces[j])) std::swap(pieces[i], pieces[j]);
    return pieces;
}

void AppendNumber(std::string& text, int64_t number) {
    if (number >= 0) text += ' ';
    text += std::to_string(number);
    text += ' ';
}

void AppendLine(std::string& text, std::initializer_list<int64_t> numbers) {
    for (const int64_t number : numbers) AppendNumber(text, number);
    text += LineEnd;
}

// Takes one line off `rest`, without its end (LF or CR LF). Nothing if no line end is left.
std::optional<std::string_view> TakeLine(std::string_view& rest) {
    const size_t end = rest.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// Takes the next number, whatever blanks and line ends come before it. False if there is none, or it
// has anything but digits behind a possible minus sign, or it does not fit.
template <std::signed_integral T>
bool TakeNumber(std::string_view& rest, T& number) {
    const size_t start = rest.find_first_not_of(Whitespace);
    if (start == std::string_view::npos) return false;
    rest.remove_prefix(start);
    const std::string_view token = rest.substr(0, rest.find_first_of(Whitespace));
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
    rest.remove_prefix(token.size());
    return error == std::errc{} && end == token.data() + token.size();
}

template <typename... T>
bool TakeNumbers(std::string_view& rest, T&... numbers) {
    return (TakeNumber(rest, numbers) && ...);
}

// The lines of the pieces. None if one of them is missing or bad.
std::vector<SavedPiece> TakePieces(std::string_view rest, int16_t upperBound) {
    std::vector<SavedPiece> pieces;
    if (upperBound >= MostPieces) return pieces;
    for (int i = 0; i <= upperBound; ++i) {
        SavedPiece p{};
        if (!TakeNumbers(rest, p.X, p.Y, p.Col, p.Row, p.Rotation, p.PieceId, p.MaskIndex)) return {};
        pieces.push_back(p);
    }
    return pieces;
}

// Line 1 holds the seconds and nothing else.
bool TakeSeconds(std::string_view& rest, int32_t& seconds) {
    auto line = TakeLine(rest);
    return line && TakeNumber(*line, seconds) && line->find_first_not_of(Whitespace) == std::string_view::npos;
}

// Which of the two readings of the path is meant: the first under which a file exists. Where neither
// does, bytes that are UTF-8 were most likely written as such.
std::string ReadPath(std::string_view bytes, bool (*fileExists)(const std::string& path)) {
    std::string fromCodePage = FromWindows1252(bytes), plain(bytes);
    if (fromCodePage == plain || fileExists(fromCodePage)) return fromCodePage;
    if (fileExists(plain) || IsValidUtf8(plain)) return plain;
    return fromCodePage;
}

bool SizesBelongTogether(const LevelSizes& sizes) {
    constexpr std::array<int16_t, 5> units{3, 4, 5, 6, 8};
    return std::ranges::find(units, sizes.TileUnit) != units.end() && sizes.TileSize == 20 * sizes.TileUnit &&
           sizes.CellSize == 11 * sizes.TileUnit && sizes.ScatterGap >= 1 && sizes.ScatterGap <= 3;
}

// True if the fitting can leave a picture of `length` in a grid of `count` cells on that side, though `reckoned`
// cells are reckoned from it: it has grown until it fills its cells, and a whole number of cells gets one more; or
// it hardly reached into the last one, and the frame and an odd margin have taken it back.
bool MayHaveCells(int count, int reckoned, int length, int cellSize) {
    if (count == reckoned) return true;
    if (length == count * cellSize) return true;
    return count == reckoned + 1 && length >= reckoned * cellSize - MostPixelsLost;
}

// Columns and rows of the pieces themselves.
Size GridOf(const std::vector<SavedPiece>& pieces) {
    Size grid;
    for (const SavedPiece& piece : pieces) {
        grid.width = std::max(grid.width, piece.Col + 1);
        grid.height = std::max(grid.height, piece.Row + 1);
    }
    return grid;
}

// The grid of a new picture is rounded up by no more than a cell on each side.
bool FitsMemory(const SavedGame& game, Size grid, Size screen) {
    const int tile = game.Sizes.TileSize, cell = game.Sizes.CellSize;
    if (int64_t(game.Pieces.size()) * tile * tile <= MostSurfacePixels) return true;
    const std::optional<int16_t> limit = CellLimit(cell, screen.width, screen.height);
    return limit && int64_t(grid.width - 1) * (grid.height - 1) <= *limit;
}

// Every cell of the grid has one piece, with the number that belongs to the cell.
bool PiecesFillGrid(const std::vector<SavedPiece>& pieces, Size grid) {
    if (int64_t(grid.width) * grid.height != int64_t(pieces.size())) return false;
    std::vector<bool> seen(pieces.size());
    for (const SavedPiece& piece : pieces) {
        if (piece.Col < 0 || piece.Row < 0 || piece.Rotation < 0 || piece.Rotation > 3) return false;
        if (piece.PieceId != piece.Row * grid.width + piece.Col || seen[size_t(piece.PieceId)]) return false;
        seen[size_t(piece.PieceId)] = true;
    }
    return true;
}

}  // namespace

bool SortPieces() {
    Pieces = SortedByCell(Pieces);
    return !Pieces.empty();
}

std::optional<SavedGame> GameToSave() {
    if (Pieces.empty()) return std::nullopt;
    SavedGame game;
    game.ElapsedSeconds = ElapsedSeconds;
    game.PicturePath = BoardPicturePath;
    game.GameLevel = GameLevel;
    game.PictureWidth = PictureWidth;
    game.PictureHeight = PictureHeight;
    game.Sizes = CurrentSizes();
    for (const PieceRec& p : SortedByCell(Pieces))
        game.Pieces.push_back({p.X, p.Y, p.Col, p.Row, p.Rotation, p.PieceId, p.MaskIndex});
    return game;
}

std::optional<std::string> FormatSavedGame(const SavedGame& game) {
    if (game.PicturePath.find_first_of("\r\n") != std::string::npos) return std::nullopt;
    std::string text;
    AppendLine(text, {game.ElapsedSeconds});
    text += ToWindows1252(game.PicturePath).value_or(game.PicturePath);
    text += LineEnd;
    for (const int16_t number : {game.GameLevel, game.PictureWidth, game.PictureHeight, game.Sizes.TileSize,
                                 game.Sizes.CellSize, game.Sizes.TileUnit, game.Sizes.ScatterGap})
        AppendLine(text, {number});
    AppendLine(text, {int64_t(game.Pieces.size()) - 1});
    for (const SavedPiece& p : game.Pieces)
        AppendLine(text, {p.X, p.Y, p.Col, p.Row, p.Rotation, p.PieceId, p.MaskIndex});
    return text;
}

std::optional<SavedGame> ParseSavedGame(std::string_view bytes, bool (*fileExists)(const std::string& path)) {
    SavedGame game;
    if (!TakeSeconds(bytes, game.ElapsedSeconds)) return std::nullopt;
    const auto path = TakeLine(bytes);
    // No file's name holds a zero byte; the system would take the name to end there.
    if (!path || path->find('\0') != std::string_view::npos) return std::nullopt;
    int16_t upperBound = -1;
    if (!TakeNumbers(bytes, game.GameLevel, game.PictureWidth, game.PictureHeight, game.Sizes.TileSize,
                     game.Sizes.CellSize, game.Sizes.TileUnit, game.Sizes.ScatterGap, upperBound))
        return std::nullopt;
    game.Pieces = TakePieces(bytes, upperBound);
    game.PicturePath = ReadPath(*path, fileExists);
    return game;
}

std::optional<Fit> FitOfHeader(const SavedGame& game) {
    if (!SizesBelongTogether(game.Sizes) || game.ElapsedSeconds < 0) return std::nullopt;
    if (game.PictureWidth <= 0 || game.PictureHeight <= 0) return std::nullopt;
    return FitRestoredGame(game.PictureWidth, game.PictureHeight, game.Sizes.CellSize);
}

std::optional<Fit> FitOfPieces(const SavedGame& game, Size screen) {
    const std::optional<Fit> reckoned = FitOfHeader(game);
    const Size grid = GridOf(game.Pieces);
    if (!reckoned || grid.width < 2 || grid.height < 2 || !FitsMemory(game, grid, screen)) return std::nullopt;
    const int cell = game.Sizes.CellSize;
    if (!MayHaveCells(grid.width, reckoned->GridCols, game.PictureWidth, cell) ||
        !MayHaveCells(grid.height, reckoned->GridRows, game.PictureHeight, cell) || !PiecesFillGrid(game.Pieces, grid))
        return std::nullopt;
    if (grid == Size{reckoned->GridCols, reckoned->GridRows}) return reckoned;
    return FitRestoredGame(game.PictureWidth, game.PictureHeight, cell, grid.width, grid.height);
}

}  // namespace PuzzleModule
