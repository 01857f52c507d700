#include <bench/quality_drawing.h>

#include <array>
#include <charconv>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace nodeline::bench {

namespace {

class DrawingReader {
public:
    Drawing Read(std::istream& in) {
        std::string text;
        for (int number = 1; std::getline(in, text); ++number) {
            std::istringstream line(text);
            char kind = ' ';
            line >> kind;
            if (!read_line(kind, line)) {
                throw std::runtime_error("line " + std::to_string(number) +
                                         " does not belong in a drawing: " + text);
            }
        }
        check_numbers();
        return std::move(drawing_);
    }

private:
    bool read_line(char kind, std::istringstream& line) {
        switch (kind) {
            case 't':
                return static_cast<bool>(line >> drawing_.milliseconds);
            case 'n':
                return read_node(line);
            case 'r':
                return read_route(line);
            case 'b':
                return read_bends(line);
            default:
                return false;
        }
    }

    bool read_node(std::istringstream& line) {
        std::size_t number = 0;
        DrawnNode node{};
        double width = 0.0;
        double height = 0.0;
        line >> number >> node.owner >> node.box.left >> node.box.top >> width >> height;
        node.box.right = node.box.left + width;
        node.box.bottom = node.box.top + height;
        if (!line || number != drawing_.nodes.size()) return false;
        drawing_.nodes.push_back(node);
        return true;
    }

    bool read_route(std::istringstream& line) {
        std::size_t number = 0;
        DrawnEdge edge{};
        if (!(line >> number >> edge.from >> edge.to)) return false;
        point<double> p;
        while (line >> p.x) {
            if (!(line >> p.y)) return false;
            edge.route.push_back(p);
        }
        if (!line.eof() || number != drawing_.edges.size()) return false;
        drawing_.edges.push_back(std::move(edge));
        return true;
    }

    bool read_bends(std::istringstream& line) {
        std::size_t number = 0;
        int bends = 0;
        if (!(line >> number >> bends) || number >= drawing_.edges.size()) return false;
        drawing_.edges[number].bends = bends;
        return true;
    }

    void check_numbers() const {
        const int count = static_cast<int>(drawing_.nodes.size());
        for (const DrawnNode& node : drawing_.nodes) {
            int steps = 0;
            for (int owner = node.owner; owner != -1; ++steps) {
                if (owner < 0 || owner >= count || steps > count) {
                    throw std::runtime_error("an owner is not there, or owns itself");
                }
                owner = drawing_.nodes[static_cast<std::size_t>(owner)].owner;
            }
        }
        for (const DrawnEdge& edge : drawing_.edges) {
            if (edge.from < 0 || edge.from >= count || edge.to < 0 || edge.to >= count) {
                throw std::runtime_error("an edge ends at a node that is not there");
            }
        }
    }

    Drawing drawing_;
};

void write_number(std::ostream& out, double value) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    out << ' ';
    out.write(text.data(), result.ptr - text.data());
}

}  // namespace

Drawing ReadDrawing(std::istream& in) { return DrawingReader().Read(in); }

void WriteDrawing(std::ostream& out, const Drawing& drawing) {
    out << 't';
    write_number(out, drawing.milliseconds);
    out << '\n';
    for (std::size_t i = 0; i < drawing.nodes.size(); ++i) {
        const DrawnNode& node = drawing.nodes[i];
        out << "n " << i << ' ' << node.owner;
        write_number(out, node.box.left);
        write_number(out, node.box.top);
        write_number(out, node.box.right - node.box.left);
        write_number(out, node.box.bottom - node.box.top);
        out << '\n';
    }
    for (std::size_t i = 0; i < drawing.edges.size(); ++i) {
        const DrawnEdge& edge = drawing.edges[i];
        out << "r " << i << ' ' << edge.from << ' ' << edge.to;
        for (const point<double>& p : edge.route) {
            write_number(out, p.x);
            write_number(out, p.y);
        }
        out << '\n';
    }
}

}  // namespace nodeline::bench
