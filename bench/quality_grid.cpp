#include <bench/quality_grid.h>

#include <cmath>

namespace nodeline::bench {

PieceGrid::PieceGrid(const std::vector<Piece>& pieces) : pieces_(pieces) {
    if (!pieces.empty()) {
        const point<double>& first = pieces.front().a;
        bounds_ = {first.x, first.y, first.x, first.y};
    }
    for (const Piece& piece : pieces) {
        for (const point<double>& p : {piece.a, piece.b}) {
            bounds_ = {std::min(bounds_.left, p.x), std::min(bounds_.top, p.y),
                       std::max(bounds_.right, p.x), std::max(bounds_.bottom, p.y)};
        }
    }
    choose_cells();
    fill();
}

// Cells are as large as the mean piece, so that a piece meets a few of them; larger where that
// would be many more cells than pieces.
void PieceGrid::choose_cells() {
    const double width = bounds_.right - bounds_.left;
    const double height = bounds_.bottom - bounds_.top;
    double sum_x = 0.0;
    double sum_y = 0.0;
    for (const Piece& piece : pieces_) {
        sum_x += std::abs(piece.b.x - piece.a.x);
        sum_y += std::abs(piece.b.y - piece.a.y);
    }
    const double count = static_cast<double>(pieces_.size());
    cell_ = {std::max(1.0, sum_x / std::max(1.0, count)),
             std::max(1.0, sum_y / std::max(1.0, count))};
    while ((width / cell_.cx + 1.0) * (height / cell_.cy + 1.0) > 4.0 * count + 16.0) {
        cell_ = {1.25 * cell_.cx, 1.25 * cell_.cy};
    }
    columns_ = static_cast<std::size_t>(width / cell_.cx) + 1;
    rows_ = static_cast<std::size_t>(height / cell_.cy) + 1;
}

// Counts what comes into each cell before it puts it there. Pieces come in order, so that the
// entries of a cell are in order too.
void PieceGrid::fill() {
    starts_.assign(columns_ * rows_ + 1, 0);
    for (const Piece& piece : pieces_) {
        for_each_cell_of(piece, [&](std::size_t cell) { ++starts_[cell + 1]; });
    }
    for (std::size_t cell = 1; cell < starts_.size(); ++cell) starts_[cell] += starts_[cell - 1];
    entries_.resize(starts_.back());
    std::vector<std::size_t> ends(starts_.begin(), starts_.end() - 1);
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        for_each_cell_of(pieces_[i], [&](std::size_t cell) { entries_[ends[cell]++] = i; });
    }
}

}  // namespace nodeline::bench
