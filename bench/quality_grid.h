// A grid over the pieces of routes: which of them are near to a piece or to a box.
#pragma once

#include <nodeline/model/geometry.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace nodeline::bench {

// A straight piece of the route of an edge.
struct Piece {
    int edge;
    // The number of its end among the points of the route.
    int end;
    point<double> a;
    point<double> b;
    double length;
};

class PieceGrid {
public:
    // The pieces have to outlive the grid, and be in the order of their edges.
    explicit PieceGrid(const std::vector<Piece>& pieces);

    // Calls `visit` with pieces of later edges than that of `piece`: all that touch it, and others;
    // some more than once.
    template <class Visit>
    void ForEachLaterNear(const Piece& piece, const Visit& visit) const {
        for_each_cell_of(piece, [&](std::size_t cell) {
            for (std::size_t i = starts_[cell + 1]; i > starts_[cell]; --i) {
                const Piece& other = pieces_[entries_[i - 1]];
                if (other.edge <= piece.edge) break;
                visit(other);
            }
        });
    }

    // Calls `visit` with all pieces that touch the box, and others; some more than once.
    template <class Visit>
    void ForEachNear(const rectangle<double>& box, const Visit& visit) const {
        const std::size_t last_row = row_of(box.bottom);
        const std::size_t last_column = column_of(box.right);
        for (std::size_t row = row_of(box.top); row <= last_row; ++row) {
            for (std::size_t column = column_of(box.left); column <= last_column; ++column) {
                const std::size_t cell = row * columns_ + column;
                for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
                    visit(pieces_[entries_[i]]);
                }
            }
        }
    }

private:
    // Rounding must not keep two pieces that touch on a border from meeting in a cell.
    static constexpr double kSlack = 1e-5;

    void choose_cells();
    void fill();

    [[nodiscard]] static std::size_t index_of(double offset, double step, std::size_t count) {
        const double index = std::clamp(offset / step, 0.0, static_cast<double>(count - 1));
        return static_cast<std::size_t>(index);
    }
    [[nodiscard]] std::size_t column_of(double x) const {
        return index_of(x - bounds_.left, cell_.cx, columns_);
    }
    [[nodiscard]] std::size_t row_of(double y) const {
        return index_of(y - bounds_.top, cell_.cy, rows_);
    }

    // Goes through the columns that a piece meets, and through the rows that it meets in each.
    template <class Visit>
    void for_each_cell_of(const Piece& piece, const Visit& visit) const {
        const bool forward = piece.a.x <= piece.b.x;
        const point<double>& from = forward ? piece.a : piece.b;
        const point<double>& to = forward ? piece.b : piece.a;
        const std::size_t last_column = column_of(to.x + kSlack);
        for (std::size_t column = column_of(from.x - kSlack); column <= last_column; ++column) {
            const double left = bounds_.left + static_cast<double>(column) * cell_.cx - kSlack;
            const double y1 = height_at(from, to, left);
            const double y2 = height_at(from, to, left + cell_.cx + 2.0 * kSlack);
            const std::size_t last_row = row_of(std::max(y1, y2) + kSlack);
            for (std::size_t row = row_of(std::min(y1, y2) - kSlack); row <= last_row; ++row) {
                visit(row * columns_ + column);
            }
        }
    }
    // Where a piece is at `x`, or at its nearer end. An upright piece is nowhere in particular: its
    // columns hold all of it.
    static double height_at(const point<double>& from, const point<double>& to, double x) {
        if (x <= from.x) return from.y;
        if (x >= to.x) return to.y;
        return from.y + (to.y - from.y) * ((x - from.x) / (to.x - from.x));
    }

    const std::vector<Piece>& pieces_;
    rectangle<double> bounds_{0.0, 0.0, 0.0, 0.0};
    size<double> cell_{1.0, 1.0};
    std::size_t columns_ = 1;
    std::size_t rows_ = 1;
    // The entries of a cell, numbers of pieces, are those from its start to the start of the next.
    std::vector<std::size_t> starts_;
    std::vector<std::size_t> entries_;
};

}  // namespace nodeline::bench
